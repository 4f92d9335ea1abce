#include "RunStages.h"

#include <benchmark/benchmark.h>

#include <iostream>
#include <string>

#include "ReadChoice.h"
#include "base/Errors.h"

namespace weldline::performance {

namespace {

void registerStage(const Stage& stage) {
    const auto body = [stage](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            stage.prepare();
            state.ResumeTiming();
            stage.run();
        }
        state.counters["parts"] = stage.parts;
        if (stage.bytes) state.counters["bytes"] = stage.bytes();
    };
    // Every stage takes long enough to be timed once; what is repeated is prepared anew.
    benchmark::RegisterBenchmark(stage.name.c_str(), body)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

void describe(BoundCase& bound) {
    const CKVR3DFiniteVolumeMesh& mesh = bound.model().mesh();
    benchmark::AddCustomContext("cells", std::to_string(mesh.m_nCV));
    benchmark::AddCustomContext("inner_faces", std::to_string(mesh.m_nInnerFace));
    benchmark::AddCustomContext("nodes", std::to_string(mesh.m_nNode));
}

}  // namespace

int runStages(int argc, char** argv, const std::function<Stages(BoundCase&)>& stagesOf) {
    benchmark::Initialize(&argc, argv);
    try {
        BoundCase bound(readChoice(argc - 1, argv + 1));
        describe(bound);
        for (const Stage& stage : stagesOf(bound)) registerStage(stage);
        benchmark::RunSpecifiedBenchmarks();
        // The stages hold what they work on, which must go before the case does.
        benchmark::ClearRegisteredBenchmarks();
        return 0;
    } catch (const UsageError& error) {
        std::cerr << error.what() << "\nusage: weldline_performance [MESH] [--benchmark_...]\n"
                  << kChoiceUsage
                  << "Options of Google Benchmark choose the stages, their repetitions and the "
                     "output.\n";
        return 2;
    }
}

}  // namespace weldline::performance
