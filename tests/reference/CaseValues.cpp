// The flow variable and what else varies over cells and faces, ordinary and extreme.
#include <algorithm>
#include <cmath>
#include <limits>

#include "Case.h"
#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Data = PartitionData;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct Source {
    double x, y, z, start;
};

// The arrival time at a point, a function that all partitions share.
class Flow {
  public:
    Flow(const CaseParameters& p, int variant) : p_(p), random_(p.seed, Streams::flow + variant) {
        const int kinds[] = {2, 0, 1, 0, 0, 0, 3};
        const double low = p.kind >= 4 ? -1.0 : 0.0;
        const double wide[3] = {p.kind >= 4 ? 1.0 : p.nx, p.kind >= 4 ? 1.0 : p.ny,
                                p.kind >= 4 ? 1.0 : p.nz};
        for (int i = 0; i < kinds[p.flow]; ++i) {
            sources_.push_back({random_.real(low, wide[0]), random_.real(low, wide[1]),
                                random_.real(low, wide[2]), random_.pick({0.0, 0.0, 0.25})});
        }
        if (p.flow == 0 && random_.chance(0.4)) {
            sources_ = {{low, 0.5, 0.5, 0.0}, {wide[0], 0.5, 0.5, 0.0}};
        }
    }

    double at(double x, double y, double z) {
        const double scale = std::pow(10.0, p_.flowScale);
        if (p_.kind == 5) return 1.0;
        if (p_.flow == 1) return scale * random_.real();
        if (p_.flow == 3) return scale * 2.0;
        if (p_.flow == 4) return scale * (2.0 * x + 3.0 * y - z + 8.0);
        if (p_.flow == 5) return scale * random_.integer(1, 2);
        double earliest = inf;
        for (const Source& s : sources_) {
            earliest = std::min(earliest, s.start + std::hypot(x - s.x, y - s.y, z - s.z));
        }
        return scale * (earliest + 0.05);
    }

  private:
    const CaseParameters& p_;
    Random random_;
    std::vector<Source> sources_;
};

void fillFlow(std::vector<Data>& data, const CaseParameters& p, int variant,
              const std::vector<std::vector<int>>& origin) {
    Flow flow(p, variant);
    std::vector<float> global;  // per global cell, NaN where not asked for yet
    Random random(p.seed, Streams::values + variant);
    for (std::size_t q = 0; q < data.size(); ++q) {
        Data& d = data[q];
        d.flow = {std::numeric_limits<float>::quiet_NaN()};
        for (int s = 1; s <= d.slots; ++s) {
            const int cell = origin[q][s];
            if (cell < 0) {
                d.flow.push_back(static_cast<float>(flow.at(d.xc[s], d.yc[s], d.zc[s])));
                continue;
            }
            if (cell >= static_cast<int>(global.size())) {
                global.resize(cell + 1, std::numeric_limits<float>::quiet_NaN());
            }
            if (std::isnan(global[cell])) {
                global[cell] = static_cast<float>(flow.at(d.xc[s], d.yc[s], d.zc[s]));
            }
            d.flow.push_back(global[cell]);
        }
        for (const Data::Group& g : d.group) {
            for (int i = 1; i <= g.count(); ++i) {
                if (p.kind >= 4) d.flow[g.slot[i]] = d.flow[g.cell[i]];
                if (p.slotValues == 1) d.flow[g.slot[i]] = static_cast<float>(random.real());
                if (p.slotValues == 2) d.flow[g.slot[i]] = 0.0f;
            }
        }
    }
}

void fillExtremes(Data& d, const CaseParameters& p, Random& random) {
    const float around[] = {0.0f, 0.0f, 0.0f, 1e-30f, 9.9e-31f, 2e-30f, -1.0f, 1e-38f, -0.0f};
    const float special[] = {float(nan), float(inf), float(-inf), 3e38f, 1e30f, -1e30f, 1e-45f};
    d.biInjection = {std::numeric_limits<float>::quiet_NaN()};
    for (int s = 1; s <= d.slots; ++s) {
        if (random.chance(p.unreached / 100.0)) d.flow[s] = random.pick(around);
        if (random.chance(p.specials / 100.0)) d.flow[s] = random.pick(special);
        if (random.chance(p.zeroVolumes / 100.0)) d.volume[s] = random.pick({0.0, 0.0, -0.0});
        d.biInjection.push_back(random.chance(0.2) ? random.pick(around)
                                                   : static_cast<float>(random.real()));
    }
    if (p.oddGeometry == 0) return;
    const double extreme[] = {0.0, -0.0, nan, inf, -inf, 1e300, -1e300, 1e-300, 1e-30, -1.0, 1.0};
    const auto spoil = [&](Data::Reals& values, std::size_t first) {
        for (std::size_t i = first; i < values.size(); ++i) {
            if (random.chance(p.oddGeometry / 1000.0)) values[i] = random.pick(extreme);
        }
    };
    for (Data::Reals* values :
         {&d.xc, &d.yc, &d.zc, &d.volume, &d.nodeX, &d.nodeY, &d.nodeZ, &d.lambda, &d.interface.xc,
          &d.interface.yc, &d.interface.zc, &d.interface.sx, &d.interface.sy, &d.interface.sz,
          &d.interface.lambda}) {
        spoil(*values, 1);
    }
    for (Data::Group& g : d.group) {
        for (Data::Reals* values : {&g.xc, &g.yc, &g.zc, &g.sx, &g.sy, &g.sz}) spoil(*values, 1);
    }
    for (int f = 1; f <= d.innerFaces(); ++f) spoil(d.innerFace[f], 3);
}

// Values of exactly 1e-30 after one pass: with all values 1 and face areas of A = 1e-60 or 0, a
// cell with n faces of area A becomes n A / (n A + 1e-30). The volumes are chosen such that the
// gradients of such a field are not all flat.
void fillLimitFlow(Data& d, Random& random) {
    const double area = 1e-30 * 1e-30;
    const double volumes[] = {1e-92, 2e-92, -1e-30, 1e-95};
    const auto place = [&](double& sx, double& sy, double& sz) {
        sx = sy = sz = 0.0;
        if (random.chance(0.45)) (random.chance(0.5) ? sx : sy) = random.pick({area, -area});
    };
    for (int s = 1; s <= d.slots; ++s) {
        d.flow[s] = 1.0f;
        d.volume[s] = random.pick(volumes);
    }
    for (int f = 1; f <= d.innerFaces(); ++f) {
        place(d.innerFace[f][3], d.innerFace[f][4], d.innerFace[f][5]);
        d.lambda[f] = 0.5;
    }
    Data::Interface& i = d.interface;
    for (int k = 1; k <= i.count(); ++k) {
        place(i.sx[k], i.sy[k], i.sz[k]);
        i.lambda[k] = 0.5;
    }
    for (Data::Group& g : d.group) {
        for (int k = 1; k <= g.count(); ++k) place(g.sx[k], g.sy[k], g.sz[k]);
    }
}

void fillStates(Data& d, const CaseParameters& p, Random& random) {
    d.cellState = {poisonInt};
    for (int c = 1; c <= d.cells; ++c) {
        const bool set = random.chance(p.cellState / 100.0);
        d.cellState.push_back(set ? random.pick({1, 2, -1, -2, 7}) : 0);
    }
}

// Stencils: the two cells of the face with half weights, or any slots with any weights.
void fillStencils(Data& d, const CaseParameters& p, Random& random) {
    for (Data::Stencils& s : d.stencils) {
        for (int f = 1; f <= d.innerFaces(); ++f) {
            int count = 2;
            if (p.rbf >= 1) count = random.integer(1, 5);
            if (p.rbf == 2 && random.chance(0.2)) count = random.pick({0, 0, -1});
            std::vector<int> cells = {count};
            Data::Reals weights = {poisonReal};
            for (int j = 1; j <= count; ++j) {
                if (p.rbf == 0) {
                    cells.push_back(static_cast<int>(d.innerFace[f][j]));
                    weights.push_back(0.5);
                } else {
                    cells.push_back(random.integer(1, d.slots));
                    weights.push_back(random.real(-0.5, 1.0));
                }
            }
            s.cells.push_back(cells);
            s.weights.push_back(weights);
        }
    }
}

}  // namespace

void fillValues(std::vector<PartitionData>& data, const CaseParameters& parameters, int variant,
                const std::vector<std::vector<int>>& origin) {
    fillFlow(data, parameters, variant, origin);
    for (std::size_t q = 0; q < data.size(); ++q) {
        const int stream = 10 * static_cast<int>(q + 1) + variant;
        Random values(parameters.seed, Streams::values + stream);
        if (parameters.limitFlow == 1) fillLimitFlow(data[q], values);
        fillExtremes(data[q], parameters, values);
        Random states(parameters.seed, Streams::values + 50 + stream);
        fillStates(data[q], parameters, states);
        Random stencils(parameters.seed, Streams::stencils + stream);
        fillStencils(data[q], parameters, stencils);
    }
}

}  // namespace weldline::reference
