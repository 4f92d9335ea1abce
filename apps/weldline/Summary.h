#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Arguments.h"
#include "FindLines.h"
#include "Outputs.h"
#include "bind/FillTime.h"
#include "io/DataSet.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"
#include "results/WeldLines.h"
#include "settings/Settings.h"

namespace weldline {

// Everything that a run reports. Lengths and times in the data set's units, angles in degrees.
struct Summary {
    struct Kind {
        std::string name;  // plural: "hexahedra"
        long long cells = 0;
    };
    int ranks = 1;
    std::string input;
    std::string field;
    std::optional<double> time;
    double scale = 1.0;  // of the lengths of the data set

    std::vector<Kind> kinds;  // only those that occur
    long long cells = 0;
    long long nodes = 0;
    long long innerFaces = 0;
    long long boundaryFaces = 0;
    double volume = 0.0;
    Vec3 low, high;
    std::vector<BoundaryGroups::PatchSummary> patches;

    Settings settings;
    std::string controlFile;  // the user's own; empty: made from the options
    int meshFileType = 0;
    double gradientSetSwitch = 1.0;
    LineOptions lineOptions;
    std::string failOn;
    std::string biField;
    std::string cellState;
    ZeroFillTime zeroTime = ZeroFillTime::Automatic;
    TrappedAir trappedAir = TrappedAir::Keep;

    FillTimeCounts fill;
    WeldLines weldLines;
    DroppedLines dropped;
    std::vector<int> failing;  // ids of the lines that fulfil failOn
    Outputs outputs;
    std::vector<std::string> remarks;
};

// The parts of the summary that come from mesh and groups, of the whole. Collective.
void describeMesh(Summary& summary, Ranks& ranks, const DataPart& data, const FvMesh& mesh,
                  const BoundaryGroups& groups);

// Makes the faces of each patch those of all ranks. The first `named` patches are the same on all.
// Collective.
void addUpPatches(Ranks& ranks, std::size_t named, BoundaryGroups& groups);

// "made from 'alpha.melt' at 126 times, up to 0.04 apart (first crossing of 0.5)"
std::string describe(const SeriesFill& series);

// What a user should know about groups and fill time, one sentence each.
std::vector<std::string> groupRemarks(const BoundaryGroups& groups, const GroupPatterns& patterns);
std::vector<std::string> seriesRemarks(const std::optional<SeriesFill>& series);
std::vector<std::string> fillRemarks(const FillTimeCounts& counts);
std::vector<std::string> flatRemarks(std::int64_t flatCells, const FillTimeCounts& counts,
                                     const Settings& settings);
std::vector<std::string> resultRemarks(const Summary& summary);

// Takes the weld lines over and finds those that fulfil failOn.
void describeLines(Summary& summary, FoundLines& found);

// Which lines fulfil failOn; one line of text.
std::string failingText(const Summary& summary);

// Which units lengths and times have.
std::string unitsText(double scale);

// "wall", "inlet", "outlet", "symmetry".
std::string nameOf(GroupKind kind);

}  // namespace weldline
