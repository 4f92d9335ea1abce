#pragma once

#include "MeshPart.h"
#include "comm/Ranks.h"

namespace weldline {

// A part as one message, and back.
Bytes packMeshPart(const MeshPart& part);
MeshPart unpackMeshPart(const Bytes& message);

}  // namespace weldline
