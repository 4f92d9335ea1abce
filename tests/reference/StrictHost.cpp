#include "StrictHost.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

thread_local StrictHost* hostOfThisThread = nullptr;

// Values around the two ends of the range that selects the second gradient set.
double switchValue(int index) {
    const double values[] = {0.0,
                             1.0,
                             1.0,
                             1.0,
                             1.0009,
                             1.001,
                             0.9991,
                             0.999,
                             std::nextafter(0.999, 1.0),
                             std::nextafter(1.001, 0.0),
                             std::numeric_limits<double>::quiet_NaN(),
                             2.0};
    return values[std::clamp(index, 0, 11)];
}

}  // namespace

StrictHost::StrictHost(const Case& randomCase, int partition, Collective& collective, Log& log)
    : case_(randomCase),
      partition_(partition),
      collective_(collective),
      log_(log),
      moving_(randomCase.parameters.moving == 1),
      processNumber_(partition),
      analysisMode_(randomCase.parameters.mode11 == 1 ? 11 : 0),
      gradSwitch_(switchValue(randomCase.parameters.gradSwitch)) {
    hostOfThisThread = this;
}

StrictHost::~StrictHost() {
    hostOfThisThread = nullptr;
}

StrictHost& StrictHost::ofThisThread() {
    return *hostOfThisThread;
}

void StrictHost::prepareBinding(const char* controlPath) {
    data_ = &case_.bindings[bindings_++][partition_];
    former_ = std::move(arrays_);
    arrays_ = std::make_unique<HostArrays>(*data_);
    CKvr3dGV& g = arrays_->gv;
    g.m_pControlFilePath = controlPath;
    const char* const meshPaths[] = {"part.q7f", "part.q7f.q7f", "part", "q7f", ""};
    g.m_pMeshFilePath = meshPaths[case_.parameters.seed % 5];
    g.m_pProcessNumber = &processNumber_;
    g.m_pAnalysisMode = &analysisMode_;
    g.m_pGradSetSwitch = &gradSwitch_;
    setInterface();
}

void StrictHost::setInterface() {
    const PartitionData::Interface& i = data_->interface;
    cell_.set(i.cell, poisonInt);
    halo_.set(i.halo, poisonInt);
    sx_.set(i.sx, poisonReal);
    sy_.set(i.sy, poisonReal);
    sz_.set(i.sz, poisonReal);
    xc_.set(i.xc, poisonReal);
    yc_.set(i.yc, poisonReal);
    zc_.set(i.zc, poisonReal);
    lambda_.set(i.lambda, poisonReal);
}

void StrictHost::releaseFormer() {
    former_.reset();
}

void StrictHost::bound() {
    if (case_.parameters.scramble == 1) {
        arrays_->scramble();
    }
}

void StrictHost::mutate(int run) {
    if (case_.parameters.scramble == 1) return;  // The host has forgotten where they are.
    Random random(case_.parameters.seed, Streams::mutation + 10 * partition_ + run);
    CKVR3DFiniteVolumeMesh& m = arrays_->mesh;
    const auto shift = [&](double* values, int count) {
        for (int i = 1; i <= count; ++i) {
            if (random.chance(0.1)) values[i] += random.real(-0.2, 0.2);
        }
    };
    shift(m.m_pXc, m.m_nCV_Total);
    shift(m.m_pVolume, m.m_nCV_Total);
    shift(m.m_pNodeZ, m.m_nNode);
    shift(m.m_pInnerFaceLambda, m.m_nInnerFace);
    shift(m.m_pWallFaceSy, m.m_nWallFace);
    for (int f = 1; f <= m.m_nInnerFace; ++f) shift(m.m_ppInnerFace[f] + 2, 6);
    for (int c = 1; c <= m.m_nCV; ++c) {
        if (random.chance(0.1)) gv().m_pCellState[c] = random.integer(-1, 1);
    }
    for (int s = 1; s <= m.m_nCV_Total; ++s) gv().m_pFlowVariable[s] += 1.0f;
    for (double& value : sx_.values()) value *= 1.5;
    sx_.refresh();
    gradSwitch_ = switchValue(random.integer(0, 11));
}

void StrictHost::DDM_Exch(double* cellArray) {
    log_.slots("DDM_Exch", cellArray, data_->slots);
    collective_.exchange(partition_, cellArray, data_->halo);
}

int StrictHost::AllMax(int& value) {
    log_.number("AllMax", value);
    const int largest = collective_.maximum(partition_, value);
    value = 77;  // Only the result counts.
    return case_.parameters.allMax == 0 ? largest : case_.parameters.allMax - 2;
}

int StrictHost::rbfIndex(const void* object) const {
    const auto place = std::find(rbfObjects_.begin(), rbfObjects_.end(), object);
    return static_cast<int>(place - rbfObjects_.begin());
}

void StrictHost::rbfConstructed(const void* object) {
    rbfObjects_.push_back(object);
    log_.number("RBF constructed", rbfIndex(object));
}

void StrictHost::rbfDestroyed(const void* object) {
    log_.number("RBF destroyed", rbfIndex(object));
}

void StrictHost::rbfVariables(const void* object, const CKvr3dGV* variables, const void* gpu,
                              const void* openMP, const CKVR3DFiniteVolumeMesh* finiteVolumes) {
    const int asBound = (variables == &gv() ? 1 : 0) + (gpu == nullptr ? 2 : 0) +
                        (openMP == nullptr ? 4 : 0) + (finiteVolumes == &mesh() ? 8 : 0);
    log_.number("RBF getKvr3dGV", 100.0 * rbfIndex(object) + asBound);
}

void StrictHost::rbfPartition(const void* object, const CPartitionFace_DLL* partitionFaces) {
    const bool asBound = partitionFaces == static_cast<CPartitionFace_DLL*>(this);
    log_.number("RBF getPartitionFace",
                100.0 * rbfIndex(object) + (asBound ? 1 : 0) + (partitionFaces ? 0 : 2));
}

void StrictHost::rbfInitialize(const void* object, int code, int**& stencil, double**& weight) {
    log_.number("RBF Initialize_FaceInterpolateData", 100.0 * rbfIndex(object) + code);
    stencil = nullptr;
    weight = nullptr;
    if (code == 1) {
        const PartitionData::Stencils& source = data_->stencils[std::min(rbfPreparations_++, 1)];
        stencils_ = std::make_unique<ArrayStore>();
        stencil = stencils_->placeRows(source.cells);
        weight = stencils_->placeRows(source.weights);
    }
}

}  // namespace weldline::reference
