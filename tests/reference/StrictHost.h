#pragma once

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

namespace weldline::reference {

// The host of one process of a case. It writes down every call in the log, answers as the case
// says, and holds every array in memory of exactly its length; slot 0 is poisoned, the outlet
// group is missing, and with `moving` the partition arrays change their place at every access.
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
    // Changes arrays in place, as between two runs.
    void mutate(int run);
    void setProcessNumber(int number) { processNumber_ = number; }

    CKvr3dGV& gv() { return arrays_->gv; }
    CKVR3DFiniteVolumeMesh& mesh() { return arrays_->mesh; }
    float* biInjection() { return arrays_->biInjection; }
    std::uint64_t checksum() const { return arrays_->store.checksum(); }
    const PartitionData& data() const { return *data_; }

    int NParInterFace() override { return data_->interface.count(); }
    int* ijParCV() override { return cell_.access(moving_); }
    int* ijPar() override { return halo_.access(moving_); }
    double* ijParSx() override { return sx_.access(moving_); }
    double* ijParSy() override { return sy_.access(moving_); }
    double* ijParSz() override { return sz_.access(moving_); }
    double* ijParxc() override { return xc_.access(moving_); }
    double* ijParyc() override { return yc_.access(moving_); }
    double* ijParzc() override { return zc_.access(moving_); }
    double* ParInterFace_Lamda() override { return lambda_.access(moving_); }
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
    // An array in two places, of which only the one handed out last is good.
    template <class T>
    class Moving {
      public:
        void set(const std::vector<T>& values, T poison) {
            good_ = values;
            poison_ = poison;
            for (auto& copy : copies_) copy = values;
        }
        T* access(bool moving) {
            if (moving) {
                std::fill(copies_[turn_].begin(), copies_[turn_].end(), poison_);
                turn_ = 1 - turn_;
                copies_[turn_] = good_;
            }
            return copies_[turn_].data();
        }
        std::vector<T>& values() { return good_; }
        void refresh() { copies_[turn_] = good_; }

      private:
        std::vector<T> good_;
        std::vector<T> copies_[2];
        T poison_{};
        int turn_ = 0;
    };

    int rbfIndex(const void* object) const;
    void setInterface();

    const Case& case_;
    int partition_;
    Collective& collective_;
    Log& log_;
    bool moving_;
    int bindings_ = 0;
    const PartitionData* data_ = nullptr;
    std::unique_ptr<HostArrays> arrays_;
    std::unique_ptr<HostArrays> former_;
    Moving<int> cell_, halo_;
    Moving<double> sx_, sy_, sz_, xc_, yc_, zc_, lambda_;
    int processNumber_ = 0;
    int analysisMode_ = 0;
    double gradSwitch_ = 0.0;
    std::vector<const void*> rbfObjects_;
    int rbfPreparations_ = 0;
    std::unique_ptr<ArrayStore> stencils_;
};

}  // namespace weldline::reference
