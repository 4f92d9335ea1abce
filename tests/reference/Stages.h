#pragma once

#include "PartitionData.h"
#include "Random.h"

namespace weldline::reference {

// Moves the first cells of a partition, whose gradients are the area vectors of its wall faces, and
// the points at which pairs are judged to where comparisons are decided by the last bit: on the
// cone, at the ends of what angle and magnitude filters accept, at right angles, on the brink of
// converging. Sometimes leaves them as drawn. The scale is that of the gradients.
void putOnStage(PartitionData& data, Random& random, double scale);

}  // namespace weldline::reference
