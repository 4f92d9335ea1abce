#pragma once

#include <array>
#include <cstddef>

namespace weldline::reference {

// What a run of the reference met on its way. The random cases count these events, so that a
// generator that no longer reaches a behaviour is found out.
enum class Event {
    acceptedNodePoint,
    acceptedFacePoint,
    acceptedConverging,
    acceptedAcrossPartition,
    secondRingCell,
    positionBeyondFaceList,
    defaultGradient,
    upwindGradient,
    keptUpwindValue,
    iterativeGradient,
    rbfGradient,
    emptyStencil,
    singularMesh,
    flatCell,
    secondSetTaken,
    isolatedNodeErased,
    cellStateOverride,
    biInjectionValue,
    controlMissing,
    sectionUnclosed,
    method40,
    traceOpened,
    count
};

constexpr std::size_t eventCount = static_cast<std::size_t>(Event::count);

inline constexpr std::array<const char*, eventCount> eventNames = {
    "node-point pairs accepted",
    "face-point pairs accepted",
    "converging pairs accepted",
    "of these across a partition face",
    "second-ring cells",
    "positions beyond a face list",
    "default gradients",
    "upwind gradients",
    "kept-over upwind values",
    "least-squares gradients",
    "RBF gradients",
    "empty stencils",
    "singular meshes",
    "flat cells",
    "second gradient set taken",
    "isolated nodes erased",
    "cell-state overrides",
    "bi-injection values",
    "control files missing",
    "sections unclosed",
    "method 40 asked for",
    "trace files opened",
};

using EventCounts = std::array<long, eventCount>;

}  // namespace weldline::reference
