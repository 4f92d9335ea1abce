// Method 4. Each cell's centre moves a step along its flow direction, the steeper cell by half the
// distance of the centres, the other by that times the ratio of the lengths of the gradients; the
// pair counts when the moved points are closer to each other than the centres.

#include <array>
#include <cmath>

#include "PairJudge.h"
#include "PairMath.h"

namespace weldline {

namespace {

constexpr double kConeAngle = 120.0;  // degrees

Vec3 moved(Vec3 X, Vec3 g, double length, double step) {
    return {X.x + (g.x / length) * step, X.y + (g.y / length) * step, X.z + (g.z / length) * step};
}

class ConvergingPairs final : public PairJudge {
  public:
    ConvergingPairs(const FvMesh& mesh, const LibraryFields& fields, const Settings& settings)
        : m_mesh(mesh),
          m_fields(fields),
          m_cone(coneAngle(settings.boundaryAngle, kConeAngle)),
          m_limit(settings.truncateAngle) {}

    Judgement judge(int a, int b, Vec3 Q) const override {
        Judgement result = judgeTests(a, b, Q);
        result.angle = gradientAngle(m_fields.gradient[a], m_fields.gradient[b]);
        return result;
    }

  private:
    Judgement judgeTests(int a, int b, Vec3 Q) const {
        for (const int c : {a, b})
            if (m_fields.smoothed[c] <= kNoMelt)
                return {Refusal::NotReached, c, m_fields.smoothed[c], kNoMelt};
        for (const int c : {a, b})
            if (isFlat(m_fields, c))
                return {Refusal::Flat, c, m_fields.steepness[c], m_fields.flatLimit};
        const Vec3 ga = m_fields.gradient[a];
        const Vec3 gb = m_fields.gradient[b];
        // The library asks for the angle first, by a bound, and last, by its value.
        const double angle = gradientAngle(ga, gb);
        if (!(angle >= 180.0 - m_limit)) return {Refusal::Alike, -1, 180.0 - angle, m_limit};
        if (shareAllSigns(ga, gb)) return {Refusal::SameSigns};
        const double cosineLimit = std::cos(m_cone * kShortPi / 180.0);
        for (const int c : {a, b}) {
            const double cosine = cosineTowards(m_fields.gradient[c], m_mesh.cellCentre[c], Q);
            if (!(cosine > cosineLimit))
                return {Refusal::OutsideCone, c, std::acos(cosine) * 180.0 / kShortPi, m_cone};
        }
        return comeCloser(a, b);
    }

    // A zero gradient gives a point that is not a number, which is no closer.
    Judgement comeCloser(int a, int b) const {
        const Vec3 ga = m_fields.gradient[a];
        const Vec3 gb = m_fields.gradient[b];
        const Vec3 Xa = m_mesh.cellCentre[a];
        const Vec3 Xb = m_mesh.cellCentre[b];
        const double ma = norm(ga);
        const double mb = norm(gb);
        const double D = norm(Xa - Xb);
        const double fa = ma > mb ? 1.0 : ma / (mb + kNoMelt);
        const double fb = ma > mb ? mb / (ma + kNoMelt) : 1.0;
        const double after =
            norm(moved(Xa, ga, ma, D * 0.5 * fa) - moved(Xb, gb, mb, D * 0.5 * fb));
        if (D > after) return {Refusal::None, -1, after, D};
        return {Refusal::Parting, -1, after, D};
    }

    const FvMesh& m_mesh;
    const LibraryFields& m_fields;
    double m_cone;
    double m_limit;  // of the meeting angle
};

}  // namespace

std::unique_ptr<PairJudge> convergingPairs(const FvMesh& mesh, const LibraryFields& fields,
                                           const Settings& settings) {
    return std::make_unique<ConvergingPairs>(mesh, fields, settings);
}

std::string nameOf(Refusal refusal) {
    constexpr std::array<const char*, 11> names{
        "none",   "not reached", "flat gradient",          "steep gradient", "shallow gradient",
        "alike",  "same signs",  "not towards each other", "volumes",        "outside cone",
        "parting"};
    return names[static_cast<std::size_t>(refusal)];
}

}  // namespace weldline
