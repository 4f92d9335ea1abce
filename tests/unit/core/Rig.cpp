#include "Rig.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <sstream>

namespace weldline::test {

Rig::Rig(int nx, int ny, int nz, const GroupOf& groupOf) {
    addBox(host, nx, ny, nz, 1.0, groupOf);
    host.finish();
    bind();
}

void Rig::bind() {
    calculator.setPartitionInterface(host.partition());
    calculator.setKVRCom(host.communication(), host.collective());
    calculator.setMeshFileType(0);
    calculator.setFlowData(host.gv(), host.mesh());
    callLog().clear();
    host.exchanges.clear();
}

int Rig::run(const std::string& control) {
    host.setControl(control);
    return calculator.calWeldLine();
}

std::vector<std::string> Rig::calls() const {
    const CKVR3DWeldLine& c = calculator;
    const std::map<const double*, std::string> names{
        {c.m_pVariable, "variable"}, {c.m_pGradX, "gradX"},   {c.m_pGradY, "gradY"},
        {c.m_pGradZ, "gradZ"},       {c.m_pGrad2X, "grad2X"}, {c.m_pGrad2Y, "grad2Y"},
        {c.m_pGrad2Z, "grad2Z"},     {c.m_pWork1X, "workX"},  {c.m_pWork1Y, "workY"},
        {c.m_pWork1Z, "workZ"}};
    std::vector<std::string> calls;
    std::size_t exchange = 0;
    for (const std::string& call : callLog()) {
        if (call != "DDM_Exch") {
            calls.push_back(call);
            continue;
        }
        const auto name = names.find(host.exchanges.at(exchange++).array);
        calls.push_back("exchange " + (name == names.end() ? "unknown array" : name->second));
    }
    return calls;
}

std::vector<std::string> Rig::traceLines() const {
    std::fflush(nullptr);
    return linesOf(TestHost::readFile(host.tracePath()));
}

bool sameBits(const std::vector<double>& left, const std::vector<double>& right) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (std::isnan(left[i]) && std::isnan(right[i])) continue;
        if (std::bit_cast<std::uint64_t>(left[i]) != std::bit_cast<std::uint64_t>(right[i]))
            return false;
    }
    return true;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace weldline::test
