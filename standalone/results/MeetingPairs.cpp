// Methods 1 and 2. Both cells filled, of comparable volume, with gradients of reasonable length
// that point towards each other and at Q. Method 1 judges all pairs of cells at the node itself,
// method 2 neighbours at the centre of their face.

#include <algorithm>
#include <cmath>

#include "PairJudge.h"
#include "PairMath.h"

namespace weldline {

namespace {

double methodsCone(int method, int meshFileType) {
    if (method == 1) return meshFileType == 2 ? 75.0 : 65.0;
    return meshFileType == 2 ? 90.0 : 75.0;
}

// Component products of a gradient with the way to the middle of two centres.
Vec3 productsTowards(Vec3 g, Vec3 X, Vec3 M) {
    const Vec3 d = M - X;
    return {g.x * d.x, g.y * d.y, g.z * d.z};
}

bool planeCounts(double sA, double sB) {
    const bool bothVanish = std::fabs(sA) < kNoMelt && std::fabs(sB) < kNoMelt;
    return !bothVanish && sA > 0.0 && sB > 0.0;
}

class MeetingPairs final : public PairJudge {
  public:
    MeetingPairs(const FvMesh& mesh, const LibraryFields& fields, const Settings& settings,
                 int meshFileType)
        : m_mesh(mesh),
          m_fields(fields),
          m_cone(coneAngle(settings.boundaryAngle, methodsCone(settings.method, meshFileType))),
          m_smallestRatio(settings.volumeFilter) {
        double largest = 0.0;
        double sum = 0.0;
        for (const Vec3 g : fields.gradient) {
            double length = norm(g);
            if (length < smallestLength) length = smallestLength;
            if (length > largest) largest = length;
            sum = sum + length;
        }
        m_longest = largest * 0.99;
        m_shortest = sum / static_cast<double>(fields.gradient.size()) * meanFactor *
                     settings.gradientFilter;
    }

    Judgement judge(int a, int b, Vec3 Q) const override {
        Judgement result = judgeTests(a, b, Q);
        result.angle = gradientAngle(m_fields.gradient[a], m_fields.gradient[b]);
        return result;
    }

  private:
    static constexpr double smallestLength = 1e-20;
    static constexpr double meanFactor = 1.0e-4;

    Judgement judgeTests(int a, int b, Vec3 Q) const {
        for (const int c : {a, b})
            if (const Judgement alone = judgeCell(c); alone.refusal != Refusal::None) return alone;
        if (shareAllSigns(m_fields.gradient[a], m_fields.gradient[b])) return {Refusal::SameSigns};
        if (!pointTowardsEachOther(a, b)) return {Refusal::NotTowardsEachOther};
        const Judgement volumes = judgeVolumes(m_mesh.cellVolume[a], m_mesh.cellVolume[b]);
        if (volumes.refusal != Refusal::None) return volumes;
        const double cosineLimit = std::cos(m_cone / 180.0 * kShortPi);
        for (const int c : {a, b}) {
            const double cosine = cosineTowards(m_fields.gradient[c], m_mesh.cellCentre[c], Q);
            if (!(cosine > cosineLimit))
                return {Refusal::OutsideCone, c, std::acos(cosine) * 180.0 / kShortPi, m_cone};
        }
        return {};
    }

    // The fill time as loaded, where method 4 reads the smoothed one.
    Judgement judgeCell(int c) const {
        const double time = m_fields.fillTime[c];
        if (time <= kNoMelt) return {Refusal::NotReached, c, time, kNoMelt};
        if (isFlat(m_fields, c))
            return {Refusal::Flat, c, m_fields.steepness[c], m_fields.flatLimit};
        const double length = norm(m_fields.gradient[c]);
        if (length > m_longest) return {Refusal::Steep, c, length, m_longest};
        if (length < m_shortest) return {Refusal::Shallow, c, length, m_shortest};
        return {};
    }

    // In space and in two of the three coordinate planes at least.
    bool pointTowardsEachOther(int a, int b) const {
        const Vec3 Xa = m_mesh.cellCentre[a];
        const Vec3 Xb = m_mesh.cellCentre[b];
        const Vec3 M{(Xa.x + Xb.x) * 0.5, (Xa.y + Xb.y) * 0.5, (Xa.z + Xb.z) * 0.5};
        const Vec3 pa = productsTowards(m_fields.gradient[a], Xa, M);
        const Vec3 pb = productsTowards(m_fields.gradient[b], Xb, M);
        if (!(pa.z + (pa.x + pa.y) > 0.0) || !(pb.x + pb.y + pb.z > 0.0)) return false;
        const int planes = (planeCounts(pa.x + pa.y, pb.x + pb.y) ? 1 : 0) +
                           (planeCounts(pa.z + pa.y, pb.z + pb.y) ? 1 : 0) +
                           (planeCounts(pa.z + pa.x, pb.z + pb.x) ? 1 : 0);
        return planes >= 2;
    }

    // A cell without volume compares with every other.
    Judgement judgeVolumes(double Va, double Vb) const {
        if (Va == 0.0 || Vb == 0.0) return {};
        const double ratio = Va / Vb;
        if (ratio > 1.0 / m_smallestRatio || ratio < m_smallestRatio)
            return {Refusal::Volumes, -1, std::min(ratio, 1.0 / ratio), m_smallestRatio};
        return {};
    }

    const FvMesh& m_mesh;
    const LibraryFields& m_fields;
    double m_cone;
    double m_smallestRatio;
    double m_longest = 0.0;
    double m_shortest = 0.0;
};

}  // namespace

std::unique_ptr<PairJudge> meetingPairs(const FvMesh& mesh, const LibraryFields& fields,
                                        const Settings& settings, int meshFileType) {
    return std::make_unique<MeetingPairs>(mesh, fields, settings, meshFileType);
}

}  // namespace weldline
