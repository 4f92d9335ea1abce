// Runs the library on a box with every method and every gradient choice and prints the bits of all
// results. Builds with other compilers and other optimisation must print the same text.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "BoxMesh.h"
#include "CKVR3DWeldLine.h"

using namespace weldline::test;

namespace {

// Distance to the nearer of two gates, shaken by a fixed pseudo-random sequence.
class ShakenFronts {
  public:
    double operator()(Point p) {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        const double noise = static_cast<double>(m_state >> 40U) / (1U << 24U);
        const double left = p[0] * p[0] + (p[1] - 1.0) * (p[1] - 1.0);
        const double right = (p[0] - 5.0) * (p[0] - 5.0) + (p[1] - 2.0) * (p[1] - 2.0);
        return std::sqrt(std::min(left, right)) + 0.05 * noise + 0.1 * p[2];
    }

  private:
    std::uint64_t m_state = 1;
};

void printBits(const char* name, const double* values, int count) {
    std::printf("%s", name);
    for (int i = 1; i <= count; ++i) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &values[i], sizeof(bits));
        std::printf(" %016llx", static_cast<unsigned long long>(bits));
    }
    std::printf("\n");
}

void run(int method, int gradientMethod) {
    TestHost host;
    addBox(host, 10, 7, 4, 0.5);
    host.finish();
    setField(host, ShakenFronts());
    host.setControl("[WeldLinePlotCtrl]\nWeldlingAngleMethod = " + std::to_string(method) +
                    "\nGradMethodMFT = " + std::to_string(gradientMethod) +
                    "\nnSmooth_afterGrad = 3\n[/WeldLinePlotCtrl]\n");
    CKVR3DWeldLine record;
    record.setPartitionInterface(host.partition());
    record.setKVRCom(host.communication(), host.collective());
    record.setMeshFileType(1);
    record.setFlowData(host.gv(), host.mesh());
    record.calWeldLine();
    std::printf("method %d gradient %d\n", method, gradientMethod);
    printBits("angle", record.getMeetingAngle(), host.mesh()->m_nNode);
    printBits("gx", record.m_pGradX, host.mesh()->m_nCV);
    printBits("gy2", record.m_pGrad2Y, host.mesh()->m_nCV);
    printBits("variable", record.m_pVariable, host.mesh()->m_nCV);
}

}  // namespace

int main() {
    for (int method = 1; method <= 4; ++method) {
        for (int gradientMethod = 1; gradientMethod <= 4; ++gradientMethod) {
            run(method, gradientMethod);
        }
    }
}
