#pragma once

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "mesh/Vec3.h"

namespace weldline {

// Pieces of the JSON texts of the program. Only sources that write such texts see this header.

using Json = nlohmann::ordered_json;  // keys in the order in which a reader expects them

inline Json number(double value) {
    return std::isfinite(value) ? Json(value) : Json();
}

inline Json vector(Vec3 v) {
    return Json::array({number(v.x), number(v.y), number(v.z)});
}

inline Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

inline Json programJson() {
    return {{"name", "weldline"}, {"version", WELDLINE_VERSION}};
}

// File names need not be valid UTF-8, JSON must be: other bytes are shown by a replacement sign.
inline std::string dumped(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace weldline
