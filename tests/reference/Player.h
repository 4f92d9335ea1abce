#pragma once

#include <cstdio>
#include <string>
#include <type_traits>

#include "BoundFields.h"
#include "CKVR3DWeldLine.h"
#include "CKVR3D_WeldLine_Manipulator.h"
#include "Random.h"
#include "Reference.h"
#include "Streams.h"
#include "StrictHost.h"
#include "Workspace.h"

namespace weldline::reference {

// Where one side of a case has its files.
struct CasePaths {
    CasePaths(const CaseParameters& parameters, const std::string& folder);

    // Makes the folders afresh.
    void prepare(const CaseParameters& parameters) const;
    void writeControl(const CaseParameters& parameters, const std::string& text) const;

    std::string folder;
    std::string control;
    std::string trace;
    const char* controlPointer() const { return noControlPath ? nullptr : control.c_str(); }
    bool noControlPath = false;
};

// What the reference met in one process of a case, and the method that it ended with.
struct Outcome {
    EventCounts events{};
    int method = 0;
    bool outgrown = false;  // at some time a mesh had more slots or nodes than the arrays
};

// Plays the sequence of a case on one calculator in one process: setters, bindings, runs, readings
// in between, end. Calculator is the library's record, its public class, or the reference.
template <class Calculator>
class Player {
  public:
    Player(const Case& randomCase, int partition, Collective& collective, const CasePaths& paths,
           Log& log)
        : case_(randomCase),
          p_(randomCase.parameters),
          partition_(partition),
          collective_(collective),
          paths_(paths),
          log_(log),
          host_(randomCase, partition, collective, log),
          random_(p_.seed, Streams::sequence + partition) {}

    // The outcome is that of the reference; the library reports none.
    void play(Outcome& outcome) {
        {
            Calculator calculator;
            log_.number("angles before binding", calculator.getMeetingAngle() == nullptr ? 1 : 0);
            for (int i = 0; i < 12; ++i) callSetter(calculator, i);
            for (int run = 0; run < p_.runs; ++run) playRun(calculator, run);
            if constexpr (std::is_same_v<Calculator, Reference>) {
                outcome = {calculator.m_events, calculator.m_WeldlingAngleMethod, outgrown_};
            }
        }
        if (partition_ == 0) log_.text("trace at the end", fileBytes(paths_.trace));
        log_.number("checksum of the host's arrays", static_cast<double>(host_.checksum() >> 12));
    }

  private:
    void playRun(Calculator& calculator, int run) {
        if (partition_ == 0) paths_.writeControl(p_, case_.controls[run]);
        collective_.barrier();
        const int bindings = Case::bindingsBefore(p_, run);
        for (int i = 0; i < bindings; ++i) bind(calculator);
        if (bindings == 0 && p_.mutate == 1) host_.mutate(run);
        const bool master = p_.rank == 0 || (p_.rank == 2 && run == 0);
        host_.setProcessNumber(master ? partition_ : 3);
        const bool alone = case_.partitions() == 1;
        if (alone) std::printf("run %d ", run);
        log_.number("calWeldLine", calculator.calWeldLine());
        host_.ran();
        if (run == 0) {  // The tables are made by the first run.
            tableSlots_ = host_.data().slots;
            tableNodes_ = host_.data().nodes;
        }
        if (alone) log_.number("visible standard output", CapturedOutput::visibleBytes());
        readAngles(calculator);
        logInternals(calculator);
        if (p_.setters == 1) {
            for (int i = random_.integer(0, 8); i > 0; --i) {
                callSetter(calculator, random_.integer(0, 18));
            }
        }
        collective_.barrier();
        if (partition_ == 0) {
            std::fflush(nullptr);
            log_.text("trace after a run", fileBytes(paths_.trace));
        }
        collective_.barrier();
    }

    void bind(Calculator& calculator) {
        host_.prepareBinding(paths_.controlPointer());
        log_.number("setBiIMFlowData", calculator.setBiIMFlowData(host_.biInjection()));
        log_.number("setFlowData", calculator.setFlowData(&host_.gv(), &host_.mesh()));
        host_.releaseFormer();
        const PartitionData& data = host_.data();
        if (firstSlots_ < 0) {  // The work arrays are made by the first binding.
            firstSlots_ = data.slots;
            firstNodes_ = data.nodes;
        }
        outgrown_ = outgrown_ || data.slots > firstSlots_ || data.nodes > firstNodes_;
        readAngles(calculator);
        logInternals(calculator);
        host_.bound();
    }

    void readAngles(Calculator& calculator) {
        log_.slots("meeting angles", calculator.getMeetingAngle(), firstNodes_);
    }

    // The first twelve set what the calculation needs, the others call with null.
    void callSetter(Calculator& c, int which) {
        const bool null = which >= 12;
        int** rows = null ? nullptr : rowLists_[which % 6];
        const int bits = p_.nullObjects;
        CPartitionFace_DLL* faces = (bits & 1) ? nullptr : &host_;
        CCommunication* communication = (bits & 2) ? nullptr : &host_;
        CKVRCom* collective = (bits & 4) ? nullptr : &host_;
        bool result = false;
        switch (which < 12 ? which : which - 7) {
            case 0:
                result = c.setPartitionInterface(faces);
                break;
            case 1:
                result = c.setKVRCom(communication, collective);
                break;
            case 2:
                result = c.setMeshFileType(p_.meshFileType);
                break;
            case 3:
                result = c.setBiIMFlowData(nullptr);
                break;
            case 4:
                result = c.setMeshFileType(p_.meshFileType);
                break;
            case 5:
                result = c.setCavityNodeConn(rows);
                break;
            case 6:
                result = c.setWallFace20(rows);
                break;
            case 7:
                result = c.setInletFace20(rows);
                break;
            case 8:
                result = c.setOutletFace20(rows);
                break;
            case 9:
                result = c.setSymmFace20(rows);
                break;
            case 10:
                result = c.setCavityGlobalNode(null ? nullptr : numbers_);
                break;
            default:
                result = c.setMapCTG2ZNL(rows);
                break;
        }
        log_.number("setter", 10.0 * which + (result ? 1 : 0));
    }

    void logInternals(const Calculator& c) {
        if constexpr (!std::is_same_v<Calculator, CKVR3D_WeldLine_Manipulator>) {
            if (p_.handle == 0) {
                log_.number("bound as handed out", differsFromBound(c, host_));
                logSettings(c);
                logArrays(c);
            }
        }
    }

    template <class Record>
    void logSettings(const Record& c) {
        log_.number("m_FlagDebugOutput", c.m_FlagDebugOutput);
        log_.number("m_pDebugFile", c.m_pDebugFile != nullptr);
        log_.number("m_MeshFileType", c.m_MeshFileType);
        log_.number("m_nCV_Total", c.m_nCV_Total);
        log_.number("m_nCV", c.m_nCV);
        log_.number("m_nNode", c.m_nNode);
        log_.number("m_nInnerFace", c.m_nInnerFace);
        log_.number("m_nBoundaryFace", c.m_nBoundaryFace);
        log_.number("m_WeldlingAngleMethod", c.m_WeldlingAngleMethod);
        log_.number("m_nGrad", c.m_nGrad);
        log_.number("m_nSmooth_beforeGrad", c.m_nSmooth_beforeGrad);
        log_.number("m_nSmooth_afterGrad", c.m_nSmooth_afterGrad);
        log_.number("m_TruncateAngle", c.m_TruncateAngle);
        log_.number("m_BoundaryAngle", c.m_BoundaryAngle);
        log_.number("m_GradValueFilterPara", c.m_GradValueFilterPara);
        log_.number("m_Volume_Filter", c.m_Volume_Filter);
        log_.number("m_GradMethodMFT", c.m_GradMethodMFT);
        log_.number("m_GradMagUpper", c.m_GradMagUpper);
        log_.number("m_GradMagLower", c.m_GradMagLower);
        log_.number("m_nMaxCellFace", c.m_nMaxCellFace);
        log_.number("m_nMinCellFace", c.m_nMinCellFace);
        log_.number("m_bMethod40", c.m_bMethod40);
        log_.number("m_nDefaultPass", c.m_nDefaultPass);
        log_.number("m_FaceAreaMag", c.m_FaceAreaMag);
        log_.text("m_MeshFileName", c.m_MeshFileName);
        const std::string traceName = c.m_DebugFileName;
        const std::size_t cut = paths_.folder.size();
        log_.text("m_DebugFileName", traceName.empty() ? "" : traceName.substr(cut));
        log_.number(
            "lists kept",
            (c.m_pCavityNodeConn == rowLists_[5]) + 2 * (c.m_pWallFace20 == rowLists_[0]) +
                4 * (c.m_pInletFace20 == rowLists_[1]) + 8 * (c.m_pOutletFace20 == rowLists_[2]) +
                16 * (c.m_pSymmFace20 == rowLists_[3]) + 32 * (c.m_pCavityGlobalNode == numbers_) +
                64 * (c.m_pMapCTG2ZNL == rowLists_[5]));
    }

    template <class Record>
    void logArrays(const Record& c) {
        const int slots = firstSlots_;
        log_.slots("m_pVariable", c.m_pVariable, slots);
        log_.slots("m_pVariableOrg", c.m_pVariableOrg, slots);
        log_.slots("m_pGradX", c.m_pGradX, slots);
        log_.slots("m_pGradY", c.m_pGradY, slots);
        log_.slots("m_pGradZ", c.m_pGradZ, slots);
        log_.slots("m_pGrad2X", c.m_pGrad2X, slots);
        log_.slots("m_pGrad2Y", c.m_pGrad2Y, slots);
        log_.slots("m_pGrad2Z", c.m_pGrad2Z, slots);
        log_.slots("m_pZeroGradFlag", c.m_pZeroGradFlag, slots);
        if (tableSlots_ >= 0) {
            log_.rows("m_ppNodeCell", c.m_ppNodeCell, tableNodes_);
            log_.rows("m_ppCellInnerFace", c.m_ppCellInnerFace, tableSlots_);
        }
    }

    const Case& case_;
    const CaseParameters& p_;
    int partition_;
    Collective& collective_;
    const CasePaths& paths_;
    Log& log_;
    StrictHost host_;
    Random random_;
    int firstSlots_ = -1, firstNodes_ = -1;  // of the work arrays
    int tableSlots_ = -1, tableNodes_ = -1;  // of the connectivity tables
    bool outgrown_ = false;
    int numbers_[2] = {0, 0};
    int* rowsOfLists_[6] = {numbers_, numbers_, numbers_, numbers_, numbers_, numbers_};
    int** rowLists_[6] = {&rowsOfLists_[0], &rowsOfLists_[1], &rowsOfLists_[2],
                          &rowsOfLists_[3], &rowsOfLists_[4], &rowsOfLists_[5]};
};

}  // namespace weldline::reference
