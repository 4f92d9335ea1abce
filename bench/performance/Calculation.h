#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "MeshCase.h"
#include "Reference.h"
#include "bind/HostModel.h"

namespace weldline::performance {

using reference::Reference;

// A mesh with its filling, bound for the library: what every calculation starts from. One process:
// there are no objects for partition and communication.
class BoundCase {
  public:
    explicit BoundCase(const MeshChoice& choice);

    HostModel& model() { return *m_model; }
    const MeshChoice& choice() const { return m_choice; }

    // A calculator, or a transcription of it, up to its first binding; one process without
    // neighbours, so without host objects that connect processes.
    template <class Calculator>
    std::unique_ptr<Calculator> unbound() {
        auto calculator = std::make_unique<Calculator>();
        calculator->setMeshFileType(0);
        return calculator;
    }
    template <class Calculator>
    std::unique_ptr<Calculator> bound() {
        auto calculator = unbound<Calculator>();
        bind(*calculator);
        return calculator;
    }
    template <class Calculator>
    void bind(Calculator& calculator) {
        calculator.setFlowData(&m_model->globalVariables(), &m_model->mesh());
    }

  private:
    MeshChoice m_choice;
    std::unique_ptr<HostModel> m_model;
};

// What a step finds in the calculator's arrays, kept to start the step again and again.
class Fields {
  public:
    explicit Fields(CKVR3DWeldLine& from) : m_doubles(10) {
        copy(from,
             [](auto* kept, auto* live, std::size_t count) { kept->assign(live, live + count); });
        m_truncateAngle = from.m_TruncateAngle;
    }

    template <class Calculator>
    void restore(Calculator& to) {
        copy(to, [](auto* kept, auto* live, std::size_t count) {
            std::copy_n(kept->begin(), count, live);
        });
        to.m_BoundaryAngle = -1.0;
        to.m_TruncateAngle = m_truncateAngle;
    }

  private:
    template <class Calculator, class Move>
    void copy(Calculator& c, Move move) {
        const auto slots = static_cast<std::size_t>(c.m_nCV_Total) + 1;
        const std::array<double*, 10> live{
            &c.m_pVariable[0], &c.m_pWork1X[0], &c.m_pWork1Y[0], &c.m_pWork1Z[0], &c.m_pGradX[0],
            &c.m_pGradY[0],    &c.m_pGradZ[0],  &c.m_pGrad2X[0], &c.m_pGrad2Y[0], &c.m_pGrad2Z[0]};
        for (std::size_t i = 0; i < live.size(); ++i) move(&m_doubles[i], live[i], slots);
        move(&m_flags, &c.m_pZeroGradFlag[0], slots);
        move(&m_angles, &c.m_pMeetingAngle[0], static_cast<std::size_t>(c.m_nNode) + 1);
    }

    std::vector<std::vector<double>> m_doubles;
    std::vector<int> m_flags;
    std::vector<double> m_angles;
    double m_truncateAngle = 0.0;
};

}  // namespace weldline::performance
