// The sequence of one calculation. It holds no state of its own; the record keeps everything.

#include "CKVR3DWeldLine.h"
#include "CKVRCom.h"
#include "GradientPlan.h"
#include "gradient/Smoothing.h"

using weldline::core::CellVectors;
using weldline::core::FirstScheme;
using weldline::core::GradientPlan;
using weldline::core::SecondScheme;
using weldline::core::Smoothing;

namespace {

// The maximum over all processes, so that every process takes the same branch; collective.
bool isSingularAnywhere(CKVR3DWeldLine& r) {
    int singular = r.checkSingularLSMatrix();
    if (r.m_pKVRCom != nullptr) singular = r.m_pKVRCom->AllMax(singular);
    return singular == 1;
}

void calculateFirstSet(CKVR3DWeldLine& r, FirstScheme scheme) {
    switch (scheme) {
        case FirstScheme::None:
            return;
        case FirstScheme::Default:
            r.GradVarb(r.m_nGrad, r.m_pVariable, r.m_pGradX, r.m_pGradY, r.m_pGradZ);
            return;
        case FirstScheme::Upwind:
            r.GradVarb_Upwind(r.m_pVariable, r.m_pGradX, r.m_pGradY, r.m_pGradZ);
            return;
    }
}

void calculateSecondSet(CKVR3DWeldLine& r, SecondScheme scheme) {
    if (scheme == SecondScheme::None) return;
    if (scheme == SecondScheme::Rbf || isSingularAnywhere(r)) {
        r.GradVarb_RBF(r.m_pVariable, r.m_pGrad2X, r.m_pGrad2Y, r.m_pGrad2Z);
    } else {
        r.GradVarb_Iterative(r.m_pVariable, r.m_pGrad2X, r.m_pGrad2Y, r.m_pGrad2Z);
    }
}

void smoothGradients(CKVR3DWeldLine& r, const GradientPlan& plan) {
    Smoothing smoothing(r);
    smoothing.smooth(CellVectors{r.m_pGradX, r.m_pGradY, r.m_pGradZ}, r.m_nSmooth_afterGrad);
    if (plan.second == SecondScheme::None) return;
    smoothing.smooth(CellVectors{r.m_pGrad2X, r.m_pGrad2Y, r.m_pGrad2Z}, r.m_nSmooth_afterGrad);
}

// Any other method leaves the meeting angles as they are.
void calculateMeetingAngles(CKVR3DWeldLine& r) {
    switch (r.m_WeldlingAngleMethod) {
        case 1:
            r.CalNodeVectorAngle_Modified_03Loop();
            return;
        case 2:
            r.CalNodeVectorAngle_Modified_FaceLoop();
            return;
        case 3:
            r.CalNodeVectorAngle_Modified_Hybrid();
            return;
        case 4:
            r.CalNodeVectorAngle_Modified_RBF_Holvex01();
            return;
        default:
            return;
    }
}

}  // namespace

int CKVR3DWeldLine::calWeldLine() {
    readControlFile();
    getMeshTopologyConn();
    Smooth_Variable(m_pVariable, m_nSmooth_beforeGrad);
    const GradientPlan plan = weldline::core::gradientPlan(m_WeldlingAngleMethod, m_GradMethodMFT);
    calculateFirstSet(*this, plan.first);
    calculateSecondSet(*this, plan.second);
    smoothGradients(*this, plan);
    calculateMeetingAngles(*this);
    return 0;
}
