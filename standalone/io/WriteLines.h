#pragma once

#include <string>
#include <vector>

#include "results/LineShapes.h"
#include "results/WeldLines.h"

namespace weldline {

// The weld lines as VTK XML polygonal data (.vtp, appended raw data): polylines along the lines, on
// the part's skin and through the part, and the polygons of the weld surfaces. Cell arrays:
//   WeldLine (id), Place (0 on the skin, 1 through the part, 2 polygon of a weld surface),
//   Class (0 weld, 1 meld), Length (of the weld line), SmallestAngle, MeanAngle (degrees),
// point arrays MeetingAngle (degrees) and FormationTime. Only the lines listed in `lines` are
// written. The name of the file is for messages. Throws RunError.
std::string lineBytes(const std::string& file, const WeldLines& lines,
                      const std::vector<LineShape>& shapes, const LineMesh& mesh);

}  // namespace weldline
