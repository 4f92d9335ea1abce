#include "CalculationStages.h"

#include <type_traits>

#include "gradient/Smoothing.h"

namespace weldline::performance {

namespace {

constexpr int kPasses = 20;
constexpr int kIterations = 6;

// The moments at which the steps start, calculated once by the library.
class Moments {
  public:
    explicit Moments(BoundCase& bound) : m_bound(bound) {}

    // After the smoothing of the flow variable, before any gradient.
    Fields& loaded() {
        return made(m_loaded, [](CKVR3DWeldLine&) {});
    }

    // After the gradients of the default configuration.
    Fields& graded() { return made(m_graded, grade); }

    // The same with smoothed gradients, where method 4 starts.
    Fields& smoothed() {
        return made(m_smoothed, [](CKVR3DWeldLine& r) {
            grade(r);
            for (double* g :
                 {r.m_pGradX, r.m_pGradY, r.m_pGradZ, r.m_pGrad2X, r.m_pGrad2Y, r.m_pGrad2Z})
                r.Smooth_Variable(g, kPasses);
        });
    }

    // Smoothed gradients of the default scheme, where methods 1 to 3 start.
    Fields& smoothedDefault() {
        return made(m_smoothedDefault, [](CKVR3DWeldLine& r) {
            r.m_TruncateAngle = 135.0;
            r.GradVarb(kIterations, r.m_pVariable, r.m_pGradX, r.m_pGradY, r.m_pGradZ);
            for (double* g : {r.m_pGradX, r.m_pGradY, r.m_pGradZ}) r.Smooth_Variable(g, kPasses);
        });
    }

  private:
    static void grade(CKVR3DWeldLine& r) {
        r.GradVarb_Upwind(r.m_pVariable, r.m_pGradX, r.m_pGradY, r.m_pGradZ);
        r.GradVarb_Iterative(r.m_pVariable, r.m_pGrad2X, r.m_pGrad2Y, r.m_pGrad2Z);
    }

    template <class Steps>
    Fields& made(std::unique_ptr<Fields>& kept, Steps steps) {
        if (!kept) {
            const auto r = m_bound.bound<CKVR3DWeldLine>();
            r->readControlFile();
            r->Smooth_Variable(r->m_pVariable, 2);
            steps(*r);
            kept = std::make_unique<Fields>(*r);
        }
        return *kept;
    }

    BoundCase& m_bound;
    std::unique_ptr<Fields> m_loaded, m_graded, m_smoothed, m_smoothedDefault;
};

// Stages of one calculator; the calculator of the single steps is made when the first one needs it.
template <class Calculator>
class StagesOf {
  public:
    StagesOf(BoundCase& bound, std::shared_ptr<Moments> moments, std::string who)
        : m_bound(bound), m_moments(std::move(moments)), m_who(std::move(who)) {}

    void addTo(Stages& stages) {
        addBeginnings(stages);
        addGradients(stages);
        addMethods(stages);
        addStep(
            stages, "smoothing pass", &Moments::graded,
            [](Calculator& c) { c.Smooth_Variable(c.m_pGradX, kPasses); }, kPasses);
    }

    // Per component, where the components of a set go through the passes together.
    void addSetSmoothing(Stages& stages) {
        addStep(
            stages, "smoothing pass in a set", &Moments::graded,
            [](CKVR3DWeldLine& r) {
                core::Smoothing(r).smooth({r.m_pGradX, r.m_pGradY, r.m_pGradZ}, kPasses);
            },
            3 * kPasses);
    }

  private:
    using Shared = std::shared_ptr<std::unique_ptr<Calculator>>;

    // Each from a calculator of its own: what is allocated at the first time belongs to the work.
    void addBeginnings(Stages& stages) {
        const auto fresh = std::make_shared<std::unique_ptr<Calculator>>();
        BoundCase& bound = m_bound;
        const auto unbind = [fresh, &bound] {
            fresh->reset();
            *fresh = bound.unbound<Calculator>();
        };
        const auto bind = [fresh, &bound] { bound.bind(**fresh); };
        const auto rebind = [unbind, bind] {
            unbind();
            bind();
        };
        stages.push_back({"binding/" + m_who, unbind, bind});
        stages.push_back(
            {"connectivity/" + m_who, rebind, [fresh] { (*fresh)->getMeshTopologyConn(); }});
        stages.push_back({"whole/" + m_who, rebind, [fresh] { (*fresh)->calWeldLine(); }});
    }

    void addGradients(Stages& stages) {
        addStep(stages, "singularity test", &Moments::loaded,
                [](Calculator& c) { c.checkSingularLSMatrix(); });
        addStep(stages, "upwind gradient", &Moments::loaded, [](Calculator& c) {
            c.GradVarb_Upwind(c.m_pVariable, c.m_pGradX, c.m_pGradY, c.m_pGradZ);
        });
        addStep(stages, "least-squares gradient", &Moments::loaded, [](Calculator& c) {
            c.GradVarb_Iterative(c.m_pVariable, c.m_pGrad2X, c.m_pGrad2Y, c.m_pGrad2Z);
        });
        addStep(
            stages, "default gradient iteration", &Moments::loaded,
            [](Calculator& c) {
                c.GradVarb(kIterations, c.m_pVariable, c.m_pGradX, c.m_pGradY, c.m_pGradZ);
            },
            kIterations);
        addStep(stages, "RBF gradient", &Moments::loaded, [](Calculator& c) {
            c.GradVarb_RBF(c.m_pVariable, c.m_pGrad2X, c.m_pGrad2Y, c.m_pGrad2Z);
        });
        buildStencilsBefore(stages.back());
    }

    void buildStencilsBefore(Stage& stage) {
        BoundCase& bound = m_bound;
        const auto calculator = m_calculator;
        const auto restore = stage.prepare;
        stage.prepare = [restore, calculator, &bound] {
            restore();
            HostModel& model = bound.model();
            (*calculator)
                ->m_RBF[0]
                .getKvr3dGV(&model.globalVariables(), nullptr, nullptr, &model.mesh());
        };
    }

    void addMethods(Stages& stages) {
        addStep(stages, "method 1", &Moments::smoothedDefault,
                [](Calculator& c) { c.CalNodeVectorAngle_Modified_03Loop(); });
        addStep(stages, "method 2", &Moments::smoothedDefault,
                [](Calculator& c) { c.CalNodeVectorAngle_Modified_FaceLoop(); });
        addStep(stages, "method 3", &Moments::smoothedDefault,
                [](Calculator& c) { c.CalNodeVectorAngle_Modified_Hybrid(); });
        addStep(stages, "method 4", &Moments::smoothed,
                [](Calculator& c) { c.CalNodeVectorAngle_Modified_RBF_Holvex01(); });
    }

    template <class Work>
    void addStep(Stages& stages, const std::string& name, Fields& (Moments::*moment)(), Work work,
                 double parts = 1.0) {
        BoundCase& bound = m_bound;
        const auto calculator = m_calculator;
        const auto moments = m_moments;
        const auto prepare = [calculator, moments, moment, &bound] {
            if (!*calculator) {
                *calculator = bound.bound<Calculator>();
                (*calculator)->readControlFile();
                (*calculator)->getMeshTopologyConn();
            }
            ((*moments).*moment)().restore(**calculator);
        };
        stages.push_back(
            {name + "/" + m_who, prepare, [calculator, work] { work(**calculator); }, parts});
    }

    BoundCase& m_bound;
    std::shared_ptr<Moments> m_moments;
    std::string m_who;
    Shared m_calculator = std::make_shared<std::unique_ptr<Calculator>>();
};

}  // namespace

Stages calculationStages(BoundCase& bound) {
    Stages stages;
    const auto moments = std::make_shared<Moments>(bound);
    StagesOf<CKVR3DWeldLine> library(bound, moments, "library");
    library.addTo(stages);
    library.addSetSmoothing(stages);
    StagesOf<Reference>(bound, moments, "naive").addTo(stages);
    return stages;
}

}  // namespace weldline::performance
