// Times the stages with Google Benchmark: processor time of one core per part of a stage.

#include <benchmark/benchmark.h>

#include <iostream>
#include <string>
#include <vector>

#include "CalculationStages.h"
#include "HostStages.h"
#include "base/Errors.h"

namespace {

using namespace weldline::performance;

constexpr const char* kUsage =
    "usage: weldline_performance [hexahedra|tetrahedra] [EDGE] [shuffled] [--benchmark_...]\n"
    "\n"
    "  EDGE      cubes along each edge of the box (100); a cube is one hexahedron or six\n"
    "            tetrahedra\n"
    "  shuffled  cells and faces in random order\n"
    "Options of Google Benchmark choose the stages, their repetitions and the output.\n";

MeshChoice readChoice(int argc, char** argv) {
    MeshChoice choice;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "shuffled")
            choice.shuffled = true;
        else if (!word.empty() && word.find_first_not_of("0123456789") == std::string::npos)
            choice.edge = std::stoi(word);
        else
            choice.shape = shapeNamed(word);
    }
    if (choice.edge < 2 || choice.edge > 400)
        throw weldline::UsageError("EDGE must be from 2 to 400");
    return choice;
}

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

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    try {
        BoundCase bound(readChoice(argc, argv));
        describe(bound);
        for (const auto& stages :
             {calculationStages(bound), graphStages(bound), hostStages(bound), vtkStages(bound)})
            for (const Stage& stage : stages) registerStage(stage);
        benchmark::RunSpecifiedBenchmarks();
        // The stages hold what they work on, which must go before the case does.
        benchmark::ClearRegisteredBenchmarks();
        return 0;
    } catch (const weldline::UsageError& error) {
        std::cerr << error.what() << "\n" << kUsage;
        return 2;
    }
}
