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

// Mesh paths with and without the extension that is looked for, some longer than the field that
// they are copied to; the extension stands before, across and behind the end of the field.
std::string meshPath(int index) {
    const std::string extension = ".q7f";
    switch (index) {
        case 1:
            return "part.q7f.q7f";
        case 2:
            return "part";
        case 3:
            return "q7f";
        case 4:
            return "";
        case 5:
            return std::string(1019, 'm') + extension;
        case 6:
            return std::string(1021, 'm') + extension;
        case 7:
            return std::string(1500, 'm') + extension;
        case 8:
            return "part.q7f" + std::string(1500, 'm');
        case 9:
            return "part.Q7F.q7";
        default:
            return "part.q7f";
    }
}

HostManner mannerOf(const CaseParameters& p) {
    HostManner manner;
    if (p.tails == 1) manner.placing = Placing::heapTails;
    if (p.guard == 1) manner.placing = Placing::endOfPage;
    if (p.guard == 2) manner.placing = Placing::startOfPage;
    manner.nullArrays = p.nullArrays == 1;
    return manner;
}

}  // namespace

StrictHost::StrictHost(const Case& randomCase, int partition, Collective& collective, Log& log)
    : case_(randomCase),
      partition_(partition),
      collective_(collective),
      log_(log),
      manner_(mannerOf(randomCase.parameters)),
      meshPath_(meshPath(randomCase.parameters.meshPath)),
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
    arrays_ = std::make_unique<HostArrays>(*data_, manner_);
    CKvr3dGV& g = arrays_->gv;
    g.m_pControlFilePath = controlPath;
    const int null = case_.parameters.nullValues;
    g.m_pMeshFilePath = (null & 8) != 0 ? nullptr : meshPath_.c_str();
    g.m_pProcessNumber = (null & 1) != 0 ? nullptr : &processNumber_;
    g.m_pAnalysisMode = (null & 2) != 0 ? nullptr : &analysisMode_;
    g.m_pGradSetSwitch = (null & 4) != 0 ? nullptr : &gradSwitch_;
    boundMesh_ = arrays_->mesh;
    boundVariables_ = g;
    setInterface();
}

void StrictHost::setInterface() {
    const PartitionData::Interface& i = data_->interface;
    const ArrayManner manner{manner_.placing, case_.parameters.moving,
                             manner_.nullArrays && i.count() == 0};
    cell_.set(i.cell, poisonInt, manner);
    halo_.set(i.halo, poisonInt, manner);
    sx_.set(i.sx, poisonReal, manner);
    sy_.set(i.sy, poisonReal, manner);
    sz_.set(i.sz, poisonReal, manner);
    xc_.set(i.xc, poisonReal, manner);
    yc_.set(i.yc, poisonReal, manner);
    zc_.set(i.zc, poisonReal, manner);
    lambda_.set(i.lambda, poisonReal, manner);
}

void StrictHost::releaseFormer() {
    former_.reset();
}

void StrictHost::bound() {
    if (case_.parameters.scramble == 1) {
        arrays_->scramble();
    }
}

void StrictHost::ran() {
    logCalls(5);  // Count, area vector and weight: the methods have no use for them.
}

// The first so many accessors since the last time.
void StrictHost::logCalls(int accessors) {
    log_.atLeast("accessor calls", {calls_.begin(), calls_.begin() + accessors});
    calls_ = {};
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
    logCalls(10);
    log_.slots("DDM_Exch", cellArray, data_->slots);
    collective_.exchange(partition_, cellArray, data_->slots, data_->halo);
}

int StrictHost::AllMax(int& value) {
    logCalls(10);
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
        stencils_ = std::make_unique<ArrayStore>(manner_.placing);
        stencil = stencils_->placeRows(source.cells, First::meaningful, poisonInt);
        weight = stencils_->placeRows(source.weights, First::meaningless, poisonReal);
    }
}

}  // namespace weldline::reference
