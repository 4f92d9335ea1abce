#include "Solver.h"

#include <algorithm>
#include <cstdio>

namespace weldline::test {

Solver::Solver(int nx, int ny, int nz, const GroupOf& groupOf) : m_row{0}, m_rows{m_row.data()} {
    addBox(host, nx, ny, nz, 1.0, groupOf);
    host.finish();
    setField(host, [](Point x) { return 1.0 + x[0] + 2.0 * x[1] + 4.0 * x[2]; });
}

void Solver::start() {
    resetRbfObjects();
    handle = std::make_unique<CKVR3D_WeldLine_Manipulator>();
    callLog().clear();
    host.exchanges.clear();
    handle->setPartitionInterface(host.partition());
    handle->setKVRCom(host.communication(), host.collective());
    handle->setCavityNodeConn(m_rows.data());
    handle->setWallFace20(m_rows.data());
    handle->setInletFace20(m_rows.data());
    handle->setOutletFace20(m_rows.data());
    handle->setSymmFace20(m_rows.data());
    handle->setCavityGlobalNode(m_row.data());
    handle->setMapCTG2ZNL(m_rows.data());
    handle->setMeshFileType(1);
    bind();
}

int Solver::run(const std::string& control) {
    host.setControl(control);
    return handle->calWeldLine();
}

std::string Solver::trace() const {
    std::fflush(nullptr);
    return TestHost::readFile(host.tracePath());
}

std::vector<double> Solver::angles() {
    const double* angle = handle->getMeetingAngle();
    return {angle, angle + host.mesh()->m_nNode + 1};
}

std::vector<double> Solver::exchanged(std::size_t n) const {
    const std::vector<double>& slots = host.exchanges.at(n).before;
    return {slots.begin() + 1, slots.end()};
}

std::vector<std::string> Solver::calls() const {
    std::vector<const double*> seen;
    std::vector<std::string> calls;
    std::size_t exchange = 0;
    for (const std::string& call : callLog()) {
        if (call != "DDM_Exch") {
            calls.push_back(call);
            continue;
        }
        const double* array = host.exchanges.at(exchange++).array;
        auto place = std::find(seen.begin(), seen.end(), array);
        if (place == seen.end()) place = seen.insert(seen.end(), array);
        calls.push_back("array " + std::to_string(place - seen.begin()));
    }
    return calls;
}

}  // namespace weldline::test
