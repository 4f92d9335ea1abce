#pragma once

namespace weldline {

// What stands behind the part in a picture.
enum class Background { Light, Dark, Transparent };

}  // namespace weldline
