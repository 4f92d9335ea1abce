#pragma once

#include <cmath>

namespace weldline {

struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vec3 operator+(Vec3 a, Vec3 b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3 operator-(Vec3 a, Vec3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 operator*(double s, Vec3 a) {
    return {s * a.x, s * a.y, s * a.z};
}
inline double dot(Vec3 a, Vec3 b) {
    return (a.x * b.x + a.y * b.y) + a.z * b.z;
}
inline Vec3 cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double norm(Vec3 a) {
    return std::sqrt(dot(a, a));
}

}  // namespace weldline
