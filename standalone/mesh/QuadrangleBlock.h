#pragma once

#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "PolygonGeometry.h"

namespace weldline {

// polygonGeometry of many quadrangles, term by term the same, with the quadrangles side by side:
// nearly all faces of most meshes are quadrangles or triangles, and a quadrangle takes four roots
// and five divisions, of which the processor does two at once where it is told.
class QuadrangleBlock {
  public:
    static constexpr std::size_t capacity = 32;

    bool isFull() const { return count_ == capacity; }

    // `face` is the caller's number of it.
    void add(const std::vector<Vec3>& points, std::span<const int> corners, std::size_t face) {
        for (std::size_t k = 0; k < 4; ++k) {
            const Vec3 point = points[static_cast<std::size_t>(corners[k])];
            x_[k][count_] = point.x;
            y_[k][count_] = point.y;
            z_[k][count_] = point.z;
        }
        faces_[count_++] = face;
    }

    // Calculates all that were added, calls take(face, geometry) for each and is empty again.
    template <class Take>
    void flush(Take take) {
        calculate();
        for (std::size_t i = 0; i < count_; ++i) {
            take(faces_[i], PolygonGeometry{{centre_.x[i], centre_.y[i], centre_.z[i]},
                                            {area_.x[i], area_.y[i], area_.z[i]}});
        }
        count_ = 0;
    }

  private:
    using Row = std::array<double, capacity>;
    struct Rows3 {
        Row x, y, z;
    };

    // Places beyond the count hold what an earlier block left there, or zeros.
    void calculate() {
        for (std::size_t i = 0; i < capacity; ++i) {
            const double meanX = 0.25 * ((((0.0 + x_[0][i]) + x_[1][i]) + x_[2][i]) + x_[3][i]);
            const double meanY = 0.25 * ((((0.0 + y_[0][i]) + y_[1][i]) + y_[2][i]) + y_[3][i]);
            const double meanZ = 0.25 * ((((0.0 + z_[0][i]) + z_[1][i]) + z_[2][i]) + z_[3][i]);
            double areaX = 0.0, areaY = 0.0, areaZ = 0.0;
            double momentX = 0.0, momentY = 0.0, momentZ = 0.0;
            double weight = 0.0;
            const auto addTriangle = [&](std::size_t k, std::size_t l) {
                const double ax = x_[k][i] - meanX, bx = x_[l][i] - meanX;
                const double ay = y_[k][i] - meanY, by = y_[l][i] - meanY;
                const double az = z_[k][i] - meanZ, bz = z_[l][i] - meanZ;
                const double tx = 0.5 * (ay * bz - az * by);
                const double ty = 0.5 * (az * bx - ax * bz);
                const double tz = 0.5 * (ax * by - ay * bx);
                const double size = std::sqrt((tx * tx + ty * ty) + tz * tz);
                const double third = size / 3.0;
                areaX += tx;
                areaY += ty;
                areaZ += tz;
                momentX += third * (ax + bx);
                momentY += third * (ay + by);
                momentZ += third * (az + bz);
                weight += size;
            };
            // On purpose no loop: the compiler takes places two by two in an innermost loop only.
            addTriangle(0, 1);
            addTriangle(1, 2);
            addTriangle(2, 3);
            addTriangle(3, 0);
            area_.x[i] = areaX;
            area_.y[i] = areaY;
            area_.z[i] = areaZ;
            // A quadrangle without area has no moment either.
            const double inverse = 1.0 / (weight > 0.0 ? weight : 1.0);
            centre_.x[i] = meanX + inverse * momentX;
            centre_.y[i] = meanY + inverse * momentY;
            centre_.z[i] = meanZ + inverse * momentZ;
        }
    }

    std::array<Row, 4> x_{}, y_{}, z_{};
    std::array<std::size_t, capacity> faces_{};
    Rows3 centre_{}, area_{};
    std::size_t count_ = 0;
};

}  // namespace weldline
