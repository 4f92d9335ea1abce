#pragma once

#include "RunControl.h"
#include "Summary.h"
#include "TemporaryFolder.h"
#include "io/WriteResult.h"
#include "partition/MeshPart.h"

namespace weldline {

// Writes the files of a run. All are complete on the disk, those of all ranks, before the first
// takes its place, so that a full disk leaves nothing of this run; signals wait until the last file
// of a rank has its place. Of a result in pieces the file that names them comes last, and then the
// pieces of earlier results go. Collective; all ranks throw the same.
void writeOutputs(Ranks& ranks, const Summary& summary, const FoundLines& found,
                  const RunControl& control, const TemporaryFolder& folder, MeshPart part,
                  ResultFields fields);

}  // namespace weldline
