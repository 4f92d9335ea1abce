// Method 2: around each node, every two of its cells that share a face, judged at the centre of
// that face.

#include "CKVR3DWeldLine.h"
#include "FaceWalk.h"
#include "Finishing.h"
#include "PairTests.h"
#include "Preparation.h"
#include "Trace.h"

using namespace weldline::core;

void CKVR3DWeldLine::CalNodeVectorAngle_Modified_FaceLoop() {
    trace(*this, "calWeldLine: CalNodeVectorAngle_Modified_FaceLoop\n");
    prepareLimits(*this, m_MeshFileType == 2 ? 90.0 : 75.0);
    walkFacesOfNodes(*this, MeetingPairTest(*this));
    finishMeetingAngles(*this);
}
