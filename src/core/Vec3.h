#pragma once

#include <cmath>

namespace weldline::core {

struct Vec3 {
    double x;
    double y;
    double z;
};

inline Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Vec3 operator*(const Vec3& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}

inline Vec3 operator/(const Vec3& a, double divisor) {
    return {a.x / divisor, a.y / divisor, a.z / divisor};
}

// Three-term sums are (x + y) + z everywhere in the library: the bracketing decides the bits.
inline double dot(const Vec3& a, const Vec3& b) {
    return (a.x * b.x + a.y * b.y) + a.z * b.z;
}

inline double length(const Vec3& a) {
    return std::sqrt(dot(a, a));
}

// Three arrays over the cell slots, 1-based: the components of a vector per cell.
struct CellVectors {
    double* x;
    double* y;
    double* z;

    Vec3 operator[](int cell) const { return {x[cell], y[cell], z[cell]}; }

    void set(int cell, const Vec3& value) const {
        x[cell] = value.x;
        y[cell] = value.y;
        z[cell] = value.z;
    }

    // Adds factor * S * value, formed from left to right, to each component of one cell.
    void add(int cell, double factor, const Vec3& S, double value) const {
        x[cell] += factor * S.x * value;
        y[cell] += factor * S.y * value;
        z[cell] += factor * S.z * value;
    }

    void subtract(int cell, double factor, const Vec3& S, double value) const {
        x[cell] -= factor * S.x * value;
        y[cell] -= factor * S.y * value;
        z[cell] -= factor * S.z * value;
    }
};

}  // namespace weldline::core
