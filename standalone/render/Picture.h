#pragma once

#include <string>

#include "PictureScene.h"

namespace weldline {

// The picture as the bytes of a PNG file. It is drawn in a process of its own, because a graphics
// driver that finds no way on ends its process. Throws RunError, one line, where the machine cannot
// draw.
std::string pictureBytes(const PictureScene& scene, const PictureStyle& style);

}  // namespace weldline
