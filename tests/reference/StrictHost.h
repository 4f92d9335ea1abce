#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "CCommunication.h"
#include "CKVRCom.h"
#include "CPartitionFace_DLL.h"
#include "Case.h"
#include "Collective.h"
#include "HostArrays.h"
#include "Log.h"
#include "PartitionArray.h"

namespace weldline::reference {

// The host of one process of a case. It writes down every call in the log with a copy of what was
// exchanged, answers as the case says, and holds every array in memory of exactly its length. What
// nobody may read hurts who reads it: slot 0 is poisoned, the outlet group leads nowhere, and with
// `moving` the partition arrays change their place at every access.
//
// The log also has the calls of each partition accessor between one exchange and the next. Only
// this much about them is laid down:
//   - count and arrays are asked for anew at each face, so a loop over N faces asks N + 1 times for
//     the count (in the singularity test at least once) and N times for each array that it uses;
//   - arrays that a step has no use for are not asked for;
//   - the meeting-angle methods ask for cells and centres as they need them, for nothing else.
// So the reference's numbers, the smallest possible ones, are lower bounds, and zero stays zero.
class StrictHost final : public CPartitionFace_DLL, public CCommunication, public CKVRCom {
  public:
    StrictHost(const Case& randomCase, int partition, Collective& collective, Log& log);
    ~StrictHost() override;

    // The host of the calling thread: the RBF objects find it here.
    static StrictHost& ofThisThread();

    // Prepares the arrays of the next binding; the former ones go with releaseFormer.
    void prepareBinding(const char* controlPath);
    void releaseFormer();
    // What happens after setFlowData.
    void bound();
    // What happens after a run.
    void ran();
    // Changes arrays in place, as between two runs.
    void mutate(int run);
    void setProcessNumber(int number) { processNumber_ = number; }

    CKvr3dGV& gv() { return arrays_->gv; }
    CKVR3DFiniteVolumeMesh& mesh() { return arrays_->mesh; }
    float* biInjection() { return arrays_->biInjection; }
    std::uint64_t checksum() const { return arrays_->store.checksum(); }
    const PartitionData& data() const { return *data_; }

    // The mesh and the global variables as they were handed out last.
    const CKVR3DFiniteVolumeMesh& boundMesh() const { return boundMesh_; }
    const CKvr3dGV& boundVariables() const { return boundVariables_; }

    int NParInterFace() override {
        ++calls_[0];
        return data_->interface.count();
    }
    int* ijParCV() override { return answer(5, cell_); }
    int* ijPar() override { return answer(6, halo_); }
    double* ijParSx() override { return answer(1, sx_); }
    double* ijParSy() override { return answer(2, sy_); }
    double* ijParSz() override { return answer(3, sz_); }
    double* ParInterFace_Lamda() override { return answer(4, lambda_); }
    double* ijParxc() override { return answer(7, xc_); }
    double* ijParyc() override { return answer(8, yc_); }
    double* ijParzc() override { return answer(9, zc_); }
    void DDM_Exch(double* cellArray) override;
    int AllMax(int& value) override;

    // Calls of the RBF objects.
    void rbfConstructed(const void* object);
    void rbfDestroyed(const void* object);
    void rbfVariables(const void* object, const CKvr3dGV* gv, const void* gpu, const void* openMP,
                      const CKVR3DFiniteVolumeMesh* mesh);
    void rbfPartition(const void* object, const CPartitionFace_DLL* partitionFaces);
    void rbfInitialize(const void* object, int code, int**& stencil, double**& weight);

  private:
    template <class T>
    T* answer(int accessor, PartitionArray<T>& array) {
        ++calls_[accessor];
        return array.access();
    }
    void logCalls(int accessors);
    int rbfIndex(const void* object) const;
    void setInterface();

    const Case& case_;
    int partition_;
    Collective& collective_;
    Log& log_;
    HostManner manner_;
    std::string meshPath_;
    int bindings_ = 0;
    const PartitionData* data_ = nullptr;
    std::unique_ptr<HostArrays> arrays_;
    std::unique_ptr<HostArrays> former_;
    CKVR3DFiniteVolumeMesh boundMesh_;
    CKvr3dGV boundVariables_;
    PartitionArray<int> cell_, halo_;
    PartitionArray<double> sx_, sy_, sz_, xc_, yc_, zc_, lambda_;
    std::array<int, 10> calls_{};
    int processNumber_ = 0;
    int analysisMode_ = 0;
    double gradSwitch_ = 0.0;
    std::vector<const void*> rbfObjects_;
    int rbfPreparations_ = 0;
    std::unique_ptr<ArrayStore> stencils_;
};

}  // namespace weldline::reference
