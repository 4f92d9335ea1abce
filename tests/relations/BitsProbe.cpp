// Runs the library on two boxes, a regular one and the shaken one with faces of all kinds, with
// every method and every gradient choice, and prints the bits of all results. Builds with other
// compilers and other optimisation must print the same text.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "BoxMesh.h"
#include "CKVR3DWeldLine.h"
#include "ShakenBox.h"

using namespace weldline::test;

namespace {

void printBits(const char* name, const double* values, int count) {
    std::printf("%s", name);
    for (int i = 1; i <= count; ++i) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &values[i], sizeof(bits));
        std::printf(" %016llx", static_cast<unsigned long long>(bits));
    }
    std::printf("\n");
}

// Distance to the nearer of two gates, shaken.
void addRegularBox(TestHost& host) {
    addBox(host, 10, 7, 4, 0.5);
    host.finish();
    Shaker shaker;
    setField(host, [&shaker](Point p) {
        const double left = std::hypot(p[0], p[1] - 1.0);
        const double right = std::hypot(p[0] - 5.0, p[1] - 2.0);
        return std::min(left, right) + shaker.between(0.0, 0.05) + 0.1 * p[2];
    });
}

void run(const char* mesh, void (*fill)(TestHost&), int method, int gradientMethod) {
    TestHost host;
    fill(host);
    host.setControl(settings(method, gradientMethod));
    CKVR3DWeldLine record;
    record.setPartitionInterface(host.partition());
    record.setKVRCom(host.communication(), host.collective());
    record.setMeshFileType(1);
    record.setFlowData(host.gv(), host.mesh());
    record.calWeldLine();
    std::printf("%s, method %d, gradient %d\n", mesh, method, gradientMethod);
    printBits("angle", record.getMeetingAngle(), host.mesh()->m_nNode);
    printBits("variable", record.m_pVariable, host.slots());
    printBits("gx", record.m_pGradX, host.slots());
    printBits("gy", record.m_pGradY, host.slots());
    printBits("gz", record.m_pGradZ, host.slots());
    printBits("gx2", record.m_pGrad2X, host.slots());
    printBits("gy2", record.m_pGrad2Y, host.slots());
    printBits("gz2", record.m_pGrad2Z, host.slots());
}

}  // namespace

int main() {
    for (int method = 1; method <= 4; ++method) {
        for (int gradientMethod = 1; gradientMethod <= 4; ++gradientMethod) {
            run("regular box", addRegularBox, method, gradientMethod);
            run("shaken box", addShakenBox, method, gradientMethod);
        }
    }
}
