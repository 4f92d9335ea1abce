#include "Analysis.h"

#include <fstream>
#include <limits>

#include "ArrayRecorder.h"
#include "CCommunication.h"
#include "CKVR3D_WeldLine_Manipulator.h"
#include "SharedAngles.h"
#include "base/Errors.h"
#include "comm/Agreement.h"
#include "comm/CollectiveMaximum.h"

namespace weldline {

namespace {

// The library reports a missing control file only on standard output and goes on.
void checkReadable(const std::string& controlFile) {
    std::ifstream stream(controlFile);
    stream.peek();  // a folder can be opened, but not read
    if (!stream.is_open() || stream.bad())
        throw InputError("control file '" + controlFile +
                         "' cannot be opened; give an existing, readable file");
}

void bind(CKVR3D_WeldLine_Manipulator& handle, HostModel& model) {
    handle.setCavityNodeConn(model.cellNodes());
    handle.setWallFace20(model.faceNodes(GroupKind::Wall));
    handle.setInletFace20(model.faceNodes(GroupKind::Inlet));
    handle.setOutletFace20(model.faceNodes(GroupKind::Outlet));
    handle.setSymmFace20(model.faceNodes(GroupKind::Symmetry));
    handle.setCavityGlobalNode(model.globalNodes());
    handle.setMapCTG2ZNL(model.cavityMap());
    handle.setMeshFileType(model.options().meshFileType);
    // Before setFlowData, which reads these values at once.
    if (model.biInjection() != nullptr) handle.setBiIMFlowData(model.biInjection());
    handle.setFlowData(&model.globalVariables(), &model.mesh());
}

std::vector<double> anglesOf(CKVR3D_WeldLine_Manipulator& handle, HostModel& model) {
    bind(handle, model);
    handle.calWeldLine();
    const double* angles = handle.getMeetingAngle();
    return {angles + 1, angles + 1 + model.mesh().m_nNode};
}

std::vector<double> calculate(HostModel& model, const RankPart& part) {
    const std::unique_ptr<CCommunication> exchange = part.ranks.haloExchange(part.interface.links);
    CollectiveMaximum collective(part.ranks);
    CKVR3D_WeldLine_Manipulator handle;
    // The library does without these where there is one rank, and is faster so.
    if (part.ranks.size() > 1) {
        handle.setPartitionInterface(&model.partitionFaces());
        handle.setKVRCom(exchange.get(), &collective);
    }
    return anglesOf(handle, model);
}

// Angles of nodes that a cell state keeps free of weld lines; below every angle, so that they
// prevail where ranks differ.
constexpr double keptFree = -std::numeric_limits<double>::infinity();

void markNodesKeptFree(HostModel& model, std::vector<double>& angles) {
    const CKVR3DFiniteVolumeMesh& mesh = model.mesh();
    const int* state = model.globalVariables().m_pCellState;
    for (int c = 1; c <= mesh.m_nCV; ++c) {
        if (state[c] < 1 && state[c] != -1) continue;
        const int* row = mesh.m_ppCellNode[c];
        for (int k = 1; k <= row[0]; ++k) angles[static_cast<std::size_t>(row[k]) - 1] = keptFree;
    }
}

}  // namespace

std::vector<double> runWeldLine(HostModel& model) {
    return runWeldLine(model, UncutMesh().part());
}

std::vector<double> runWeldLine(HostModel& model, const RankPart& part) {
    Ranks& ranks = part.ranks;
    together(ranks, [&] { checkReadable(model.options().controlFile); });
    std::vector<double> angles = calculate(model, part);
    markNodesKeptFree(model, angles);
    takeSmallestAngles(ranks, part.interface.sharedNodes, angles);
    for (double& angle : angles)
        if (angle == keptFree) angle = 180.0;
    return angles;
}

// In one process nothing is left to do with the angles.
RecordedRun recordWeldLine(HostModel& model) {
    checkReadable(model.options().controlFile);
    ArrayRecorder recorder(model.mesh().m_nCV);
    CKVR3D_WeldLine_Manipulator handle;
    handle.setKVRCom(&recorder, nullptr);
    std::vector<double> angles = anglesOf(handle, model);
    return {std::move(angles), recorder.take()};
}

}  // namespace weldline
