#include "Bench.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <stdexcept>

namespace weldline::test {

Bench::Bench() {
    resetRbfObjects();  // the calculator holds five of them, none of which is used here
}

int Bench::addNode(Point position) {
    return m_nodes = host.addNode(position);
}

int Bench::addCell(Point centre, Point gradient, std::vector<int> nodes) {
    m_gradients.push_back(gradient);
    return host.addCell(centre, 1.0, std::move(nodes));
}

void Bench::bind(PaceMaker paceMaker) {
    int last = 0;
    if (paceMaker == PaceMaker::Yes) {
        std::vector<int> nodes(m_nodes);
        std::iota(nodes.begin(), nodes.end(), 1);
        last = addCell({500, 500, 500}, {1000, 0, 0}, nodes);
    }
    host.finish();
    line.setPartitionInterface(host.partition());
    line.setKVRCom(host.communication(), host.collective());
    line.setMeshFileType(0);
    line.setFlowData(host.gv(), host.mesh());
    line.getMeshTopologyConn();
    line.m_TruncateAngle = kNoTruncation;
    host.gradSetSwitch = 0.0;  // method 4 compares the first gradient set
    for (int cell = 1; cell <= line.m_nCV; ++cell) {
        setGradient(cell, m_gradients[cell - 1]);
        // Rows of types have no count of their own.
        line.m_ppCellFaceType[cell][0] = 0;
    }
    if (last != 0) line.m_pZeroGradFlag[last] = 1;
}

void Bench::setGradient(int slot, Point gradient) {
    line.m_pGradX[slot] = gradient[0];
    line.m_pGradY[slot] = gradient[1];
    line.m_pGradZ[slot] = gradient[2];
}

void Bench::setSecondGradient(int slot, Point gradient) {
    line.m_pGrad2X[slot] = gradient[0];
    line.m_pGrad2Y[slot] = gradient[1];
    line.m_pGrad2Z[slot] = gradient[2];
}

void Bench::run(int method) {
    switch (method) {
        case 1:
            return line.CalNodeVectorAngle_Modified_03Loop();
        case 2:
            return line.CalNodeVectorAngle_Modified_FaceLoop();
        case 3:
            return line.CalNodeVectorAngle_Modified_Hybrid();
        case 4:
            return line.CalNodeVectorAngle_Modified_RBF_Holvex01();
        default:
            throw std::invalid_argument("no such method");
    }
}

TwoCells::TwoCells(const Layout& layout) {
    for (const Point& node : layout.nodes) addNode(node);
    addCell(layout.a, {1, 0, 0}, {1, 2, 3, 4});
    addCell(layout.b, {-1, 0, 0}, {1, 2, 3, 4});
    if (layout.sharedFace) host.addInner(1, 2, {4, 0, 0}, layout.face);
    bind();
}

HaloPair::HaloPair() {
    for (Point node : {Point{10, 21, 30}, {10, 19, 30}, {9, 20, 31}}) host.addNode(node);
    addCell({9, 20, 30}, {1, 0, 0}, {1, 2, 3});
    host.addInterface(1, {4, 0, 0}, {10, 20, 30}, 0.5, {11, 20, 30}, 1.0, {1, 2});
    bind();
    halo = host.haloSlot(1);
    setGradient(halo, {-1, 0, 0});
}

bool meets(int method, const Change& change, const Layout& layout) {
    TwoCells bench(layout);
    change(bench);
    bench.run(method);
    return bench.met(1);
}

std::string methodName(const testing::TestParamInfo<int>& info) {
    return "Method" + std::to_string(info.param);
}

bool sameBits(double left, double right) {
    if (std::isnan(left) && std::isnan(right)) return true;
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

}  // namespace weldline::test
