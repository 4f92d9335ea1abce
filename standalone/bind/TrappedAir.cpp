#include "TrappedAir.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

#include "FillTime.h"

namespace weldline {

namespace {

constexpr double notClosed = std::numeric_limits<double>::infinity();

// Largest and smallest values only, which come out the same in any order.
double slownessOf(Ranks& ranks, const FvMesh& mesh, const std::vector<float>& fillTime) {
    double latest = 0.0;
    for (const float time : fillTime) latest = std::max(latest, static_cast<double>(time));
    constexpr double none = std::numeric_limits<double>::max();
    Vec3 high{-none, -none, -none};
    Vec3 minusLow = high;
    for (const Vec3& centre : mesh.cellCentre) {
        high = {std::max(high.x, centre.x), std::max(high.y, centre.y), std::max(high.z, centre.z)};
        minusLow = {std::max(minusLow.x, -centre.x), std::max(minusLow.y, -centre.y),
                    std::max(minusLow.z, -centre.z)};
    }
    latest = ranks.maximum(latest);
    for (double* value : {&high.x, &high.y, &high.z, &minusLow.x, &minusLow.y, &minusLow.z})
        *value = ranks.maximum(*value);
    const double diagonal = norm(high + minusLow);
    return diagonal > 0.0 ? latest / diagonal : 0.0;
}

// Earliest arrivals, nearest first (Dijkstra). Each rank goes as far as it gets and then looks what
// its neighbours have found, until nobody finds an earlier time. A minimum over all paths does not
// depend on the order in which they are tried.
class GapClosing {
  public:
    GapClosing(const FvMesh& mesh, const std::vector<float>& fillTime, double slowness)
        : m_mesh(mesh),
          m_fillTime(fillTime),
          m_slowness(slowness),
          m_time(fillTime.begin(), fillTime.end()) {
        for (std::size_t c = 0; c < m_time.size(); ++c)
            if (isGap(c)) m_time[c] = notClosed;
    }

    std::vector<double> close(const RankPart& part) {
        for (int cell = 0; cell < m_mesh.cellCount(); ++cell)
            if (isGap(cell)) lookRound(cell);
        spread();
        do lookAcross(part);
        while (spreadTogether(part.ranks));
        return std::move(m_time);
    }

  private:
    using Arrival = std::pair<double, int>;  // time, cell

    bool isGap(std::size_t cell) const { return !isReached(m_fillTime[cell]); }

    void arrive(int cell, Vec3 from, double time) {
        if (!isGap(cell)) return;
        const double arrival = time + m_slowness * norm(m_mesh.cellCentre[cell] - from);
        if (!(arrival < m_time[cell])) return;
        m_time[cell] = arrival;
        m_open.emplace(arrival, cell);
    }

    int across(int face, int cell) const {
        return m_mesh.owner[face] == cell ? m_mesh.neighbour[face] : m_mesh.owner[face];
    }

    void lookRound(int cell) {
        for (const int face : m_mesh.cellFaces[cell]) {
            if (face >= m_mesh.innerFaces) continue;
            const int other = across(face, cell);
            arrive(cell, m_mesh.cellCentre[other], m_time[other]);
        }
    }

    void spread() {
        while (!m_open.empty()) {
            const auto [time, cell] = m_open.top();
            m_open.pop();
            if (time > m_time[cell]) continue;
            for (const int face : m_mesh.cellFaces[cell])
                if (face < m_mesh.innerFaces)
                    arrive(across(face, cell), m_mesh.cellCentre[cell], time);
        }
    }

    void lookAcross(const RankPart& part) {
        const std::vector<double> halo = haloValues(part.ranks, part.interface, m_time);
        for (int i = 0; i < m_mesh.interfaceFaces; ++i) {
            const int cell = part.interface.haloOfFace[i];
            arrive(m_mesh.owner[m_mesh.firstInterfaceFace() + i], part.interface.halo[cell].centre,
                   halo[cell]);
        }
    }

    bool spreadTogether(Ranks& ranks) {
        const bool goesOn = ranks.sum(static_cast<std::int64_t>(m_open.size())) > 0;
        spread();
        return goesOn;
    }

    const FvMesh& m_mesh;
    const std::vector<float>& m_fillTime;
    double m_slowness;
    std::vector<double> m_time;
    std::priority_queue<Arrival, std::vector<Arrival>, std::greater<>> m_open;
};

}  // namespace

std::int64_t closeTrappedAir(const RankPart& part, const FvMesh& mesh,
                             std::vector<float>& fillTime) {
    const double slowness = slownessOf(part.ranks, mesh, fillTime);
    const std::vector<double> times = GapClosing(mesh, fillTime, slowness).close(part);
    std::int64_t closed = 0;
    for (std::size_t c = 0; c < times.size(); ++c) {
        if (isReached(fillTime[c]) || times[c] > std::numeric_limits<float>::max()) continue;
        fillTime[c] = static_cast<float>(times[c]);
        ++closed;
    }
    return part.ranks.sum(closed);
}

}  // namespace weldline
