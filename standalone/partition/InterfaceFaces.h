#pragma once

#include <vector>

#include "FaceMatching.h"

namespace weldline {

// Orders the matches as interface faces are: by the number of the own cell, then of the other
// cell, then as the cell with the lower number has its faces.
void orderMatches(const MeshPart& part, const FvMesh& mesh, std::vector<FaceMatch>& matches);

// Gives both sides of each matched face the centre and the area vector of the cell with the lower
// number, on the other side with opposite sign. Throws InputError on all ranks when the two
// polygons run the same way round. Collective.
void alignFaces(Ranks& ranks, const MeshPart& part, FvMesh& mesh,
                const std::vector<FaceMatch>& matches);

// Moves the matched faces to the end of the face table, in the order of the matches, whose face
// numbers follow.
void moveToEnd(FvMesh& mesh, std::vector<FaceMatch>& matches);

// Computes centre and volume of the cells at interface faces anew, summing over their faces in the
// order of the uncut mesh: by the cell across, boundary faces last.
void recomputeCells(const MeshPart& part, FvMesh& mesh, const std::vector<FaceMatch>& matches);

}  // namespace weldline
