#include "Analysis.h"

#include <fstream>

#include "CKVR3D_WeldLine_Manipulator.h"
#include "base/Errors.h"
#include "comm/OneProcess.h"

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

void bind(CKVR3D_WeldLine_Manipulator& handle, HostModel& model, HostServices services) {
    handle.setPartitionInterface(&services.partition);
    handle.setKVRCom(&services.exchange, &services.collective);
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

}  // namespace

std::vector<double> runWeldLine(HostModel& model, HostServices services) {
    checkReadable(model.options().controlFile);
    CKVR3D_WeldLine_Manipulator handle;
    bind(handle, model, services);
    handle.calWeldLine();
    const double* angles = handle.getMeetingAngle();
    return {angles + 1, angles + 1 + model.mesh().m_nNode};
}

std::vector<double> runWeldLine(HostModel& model) {
    NoInterfaceFaces partition;
    NoExchange exchange;
    OwnMaximum collective;
    return runWeldLine(model, {partition, exchange, collective});
}

}  // namespace weldline
