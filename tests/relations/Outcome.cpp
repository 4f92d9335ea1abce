#include "Outcome.h"

#include <algorithm>

namespace weldline::test {

namespace {

template <class Value>
std::vector<Value> slotsFrom1(const Value* array, int last) {
    return {array + 1, array + last + 1};
}

}  // namespace

int Outcome::nodesBelow180() const {
    return static_cast<int>(
        std::count_if(angle.begin(), angle.end(), [](double degrees) { return degrees < 180.0; }));
}

void bind(CKVR3DWeldLine& calculator, TestHost& host) {
    calculator.setPartitionInterface(host.partition());
    calculator.setKVRCom(host.communication(), host.collective());
    calculator.setMeshFileType(1);
    calculator.setFlowData(host.gv(), host.mesh());
}

Outcome run(CKVR3DWeldLine& c, TestHost& host, const std::string& control) {
    callLog().clear();
    host.exchanges.clear();
    host.setControl(control);
    c.calWeldLine();
    const int slots = host.slots();
    return {slotsFrom1(c.getMeetingAngle(), host.mesh()->m_nNode),
            slotsFrom1(c.m_pVariable, slots),
            {slotsFrom1(c.m_pGradX, slots), slotsFrom1(c.m_pGradY, slots),
             slotsFrom1(c.m_pGradZ, slots)},
            {slotsFrom1(c.m_pGrad2X, slots), slotsFrom1(c.m_pGrad2Y, slots),
             slotsFrom1(c.m_pGrad2Z, slots)},
            slotsFrom1(c.m_pZeroGradFlag, slots)};
}

Outcome freshRun(TestHost& host, const std::string& control) {
    CKVR3DWeldLine calculator;
    bind(calculator, host);
    return run(calculator, host, control);
}

std::string inWords(const Choice& choice) {
    return "method " + std::to_string(choice.method) + ", gradient method " +
           std::to_string(choice.gradientMethod) + ", switch " +
           std::to_string(choice.gradSetSwitch);
}

std::vector<Choice> everyChoice() {
    return {{1, 1}, {2, 1}, {3, 1}, {4, 1}, {4, 2}, {4, 2, 0.0}, {4, 3}, {4, 3, 0.0}, {4, 4}};
}

}  // namespace weldline::test
