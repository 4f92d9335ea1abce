#pragma once

#include <string>

#include "OpenDataSet.h"

namespace weldline {

// Adds the boundary of a CGNS file's unstructured zones, one surface block for each name, and
// remarks on conditions that no surface element belongs to. A boundary condition is named by its
// family where it has one; it takes surface elements, or all whose corners are among its points.
// Elements in no condition become a block by the name of their section. The conditions are read
// here because VTK's reader leaves out all but those of type FamilySpecified and does not tell the
// family. Throws InputError.
void addCgnsSurfaces(const std::string& file, OpenedDataSet& opened);

}  // namespace weldline
