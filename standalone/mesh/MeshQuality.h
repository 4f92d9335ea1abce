#pragma once

#include "FvMesh.h"

namespace weldline {

// How far a mesh is from the ideal, over its inner faces. All 0 (ratio 1) without inner faces.
struct MeshQuality {
    double worstNonOrthogonality = 0.0;  // angle between face normal and the line from cell centre
    double meanNonOrthogonality = 0.0;   // to cell centre; degrees
    double worstVolumeRatio = 1.0;       // of the larger to the smaller of two neighbours
    double worstSkewness = 0.0;  // distance from the face centre to where the line passes the
                                 // face's plane, over the length of the line
    int steepFaces = 0;          // above 70 degrees
    int unevenFaces = 0;         // volume ratio above 5
};

MeshQuality qualityOf(const FvMesh& mesh);

}  // namespace weldline
