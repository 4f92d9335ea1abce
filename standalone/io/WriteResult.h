#pragma once

#include <string>
#include <vector>

#include "mesh/CellMesh.h"
#include "results/PatchPlaces.h"

namespace weldline {

// What a result tells beside its fields, for later work on it.
struct ResultNotes {
    PatchPlaces patches;
    std::string run;  // what the result comes from, as JSON; empty: nothing is told
};

// What analyze leaves in a data set; all arrays 0-based.
struct ResultFields {
    std::vector<double> meetingAngle;  // per point, degrees, 180 where nothing meets
    std::vector<int> weldLine;         // per point, component number from 1, 0 none
    std::vector<float> fillTime;       // per cell, as read
    std::vector<Vec3> flowDirection;   // per cell, unit vector along the flow, zero where unknown
    std::vector<int> refusalReason;    // per point, see NodeReasons.h; empty: not asked for
    ResultNotes notes;                 // of rank 0; field data WeldLineRun, PatchNames, PatchOfFace
                                       // and PatchFaceCentres
};

// The mesh with point data MeetingAngle and WeldLine and cell data FillTime and FlowDirection as a
// VTK XML unstructured grid (.vtu: appended raw data, zlib compressed). The name of the file is for
// messages. Throws RunError when the grid cannot be written.
std::string resultBytes(const std::string& file, const CellMesh& mesh, const ResultFields& fields);

// The same into a file, which is whole or not there: it is written beside its place under another
// name and renamed. Throws RunError when it cannot be written.
void writeResult(const std::string& file, const CellMesh& mesh, const ResultFields& fields);

}  // namespace weldline
