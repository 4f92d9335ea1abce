// Boxes of hexahedra, tetrahedra, mixed cells and merged polyhedra. The shapes only have to be
// plausible and to fit together: the calculation sees nothing but arrays.
#include "GlobalMesh.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Loop = std::vector<int>;

Point operator+(const Point& a, const Point& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
Point operator-(const Point& a, const Point& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Point operator*(const Point& a, double s) {
    return {a.x * s, a.y * s, a.z * s};
}
double dot(const Point& a, const Point& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Point cross(const Point& a, const Point& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// Builds cells over a lattice of nodes; `grid` keeps each node's undisturbed place.
class BoxBuilder {
  public:
    explicit BoxBuilder(const CaseParameters& p) : p_(p), random_(p.seed, Streams::mesh) {
        for (int k = 0; k <= p.nz; ++k) {
            for (int j = 0; j <= p.ny; ++j) {
                for (int i = 0; i <= p.nx; ++i) {
                    grid.push_back({double(i), double(j), double(k)});
                }
            }
        }
    }

    void fill() {
        const int base = p_.kind == 3 ? random_.integer(0, 2) : p_.kind;
        for (int j = 0; j < p_.ny; ++j) {
            for (int i = 0; i < p_.nx; ++i) {
                const int column = random_.integer(0, 2);
                for (int k = 0; k < p_.nz; ++k) {
                    addBlock(base, column, i, j, k);
                }
            }
        }
        if (p_.kind == 3) merge();
    }

    std::vector<Point> grid;
    std::vector<GlobalMesh::Cell> cells;

  private:
    int node(int i, int j, int k) const { return (k * (p_.ny + 1) + j) * (p_.nx + 1) + i; }

    void addCell(std::vector<Loop> faces) {
        GlobalMesh::Cell cell;
        for (const Loop& face : faces) {
            for (int n : face) {
                if (std::find(cell.nodes.begin(), cell.nodes.end(), n) == cell.nodes.end()) {
                    cell.nodes.push_back(n);
                }
            }
        }
        cell.faces = std::move(faces);
        cells.push_back(std::move(cell));
    }

    void addBlock(int base, int column, int i, int j, int k) {
        const int n[8] = {node(i, j, k),
                          node(i + 1, j, k),
                          node(i + 1, j + 1, k),
                          node(i, j + 1, k),
                          node(i, j, k + 1),
                          node(i + 1, j, k + 1),
                          node(i + 1, j + 1, k + 1),
                          node(i, j + 1, k + 1)};
        if (base == 1) {
            addTetrahedra(n);
        } else if (base == 2 && column == 1) {
            addWedge({n[0], n[1], n[2]}, {n[4], n[5], n[6]});
            addWedge({n[0], n[2], n[3]}, {n[4], n[6], n[7]});
        } else if (base == 2 && column == 2 && random_.chance(0.5)) {
            const int centre = static_cast<int>(grid.size());
            grid.push_back({i + 0.5, j + 0.5, k + 0.5});
            for (const Loop& q : quadrangles(n)) {
                addCell({q,
                         {q[0], q[1], centre},
                         {q[1], q[2], centre},
                         {q[2], q[3], centre},
                         {q[3], q[0], centre}});
            }
        } else {
            addCell(quadrangles(n));
        }
    }

    static std::vector<Loop> quadrangles(const int (&n)[8]) {
        return {{n[0], n[3], n[7], n[4]}, {n[1], n[2], n[6], n[5]}, {n[0], n[1], n[5], n[4]},
                {n[3], n[2], n[6], n[7]}, {n[0], n[1], n[2], n[3]}, {n[4], n[5], n[6], n[7]}};
    }

    void addWedge(const Loop& low, const Loop& high) {
        addCell({low,
                 high,
                 {low[0], low[1], high[1], high[0]},
                 {low[1], low[2], high[2], high[1]},
                 {low[2], low[0], high[0], high[2]}});
    }

    // Six tetrahedra around the diagonal; neighbouring blocks fit.
    void addTetrahedra(const int (&n)[8]) {
        const int ways[6][2] = {{1, 2}, {1, 5}, {3, 2}, {3, 7}, {4, 5}, {4, 7}};
        for (const auto& way : ways) {
            const int a = n[0], b = n[way[0]], c = n[way[1]], d = n[6];
            addCell({{a, b, c}, {a, b, d}, {a, c, d}, {b, c, d}});
        }
    }

    // Merges random neighbours into polyhedra.
    void merge() {
        std::vector<int> root(cells.size());
        std::iota(root.begin(), root.end(), 0);
        const auto find = [&](int c) {
            while (root[c] != c) c = root[c];
            return c;
        };
        std::map<Loop, int> seen;
        std::map<Loop, std::pair<int, int>> pairs;
        for (int c = 0; c < static_cast<int>(cells.size()); ++c) {
            for (Loop face : cells[c].faces) {
                std::sort(face.begin(), face.end());
                const auto [place, fresh] = seen.emplace(face, c);
                if (fresh) continue;
                pairs[face] = {place->second, c};
                if (random_.chance(0.25)) root[find(c)] = find(place->second);
            }
        }
        std::map<int, std::vector<Loop>> merged;
        for (int c = 0; c < static_cast<int>(cells.size()); ++c) {
            for (const Loop& face : cells[c].faces) {
                Loop key = face;
                std::sort(key.begin(), key.end());
                const auto pair = pairs.find(key);
                if (pair != pairs.end() && find(pair->second.first) == find(pair->second.second)) {
                    continue;
                }
                merged[find(c)].push_back(face);
            }
        }
        cells.clear();
        for (auto& [c, faces] : merged) addCell(std::move(faces));
    }

    const CaseParameters& p_;
    Random random_;
};

// The side of the box on which all nodes of the face lie, or -1.
int sideOf(const Loop& face, const std::vector<Point>& grid, const CaseParameters& p) {
    const auto all = [&](auto coordinate, double value) {
        return std::all_of(face.begin(), face.end(),
                           [&](int n) { return coordinate(grid[n]) == value; });
    };
    const auto x = [](const Point& q) { return q.x; };
    const auto y = [](const Point& q) { return q.y; };
    const auto z = [](const Point& q) { return q.z; };
    if (all(x, 0.0)) return 0;
    if (all(x, p.nx)) return 1;
    if (all(y, 0.0)) return 2;
    if (all(y, p.ny)) return 3;
    if (all(z, 0.0)) return 4;
    if (all(z, p.nz)) return 5;
    return -1;
}

std::vector<Point> disturbed(const std::vector<Point>& grid, const CaseParameters& p, int variant) {
    Random random(p.seed, Streams::positions + variant);
    const double d = p.jitter / 100.0;
    std::vector<Point> nodes;
    for (const Point& g : grid) {
        Point q = g + Point{random.real(-d, d), random.real(-d, d), random.real(-d, d)};
        if (p.squash == 1) q.z *= 0.03125;
        if (p.squash == 2) q.z = 0.25;
        if (p.squash == 3) q.y *= 1e-155;
        nodes.push_back(q);
    }
    return nodes;
}

void addFaces(GlobalMesh& mesh, const std::vector<Point>& grid, const CaseParameters& p) {
    std::map<Loop, int> known;
    for (int c = 0; c < static_cast<int>(mesh.cells.size()); ++c) {
        for (const Loop& loop : mesh.cells[c].faces) {
            Loop key = loop;
            std::sort(key.begin(), key.end());
            const auto [place, fresh] = known.emplace(key, static_cast<int>(mesh.faces.size()));
            if (!fresh) {
                mesh.faces[place->second].second = c;
                mesh.faces[place->second].side = -1;
                continue;
            }
            GlobalMesh::Face face;
            face.first = c;
            face.nodes = loop;
            face.side = sideOf(loop, grid, p);
            mesh.faces.push_back(face);
        }
    }
}

void addGeometry(GlobalMesh& mesh) {
    for (GlobalMesh::Cell& cell : mesh.cells) {
        for (int n : cell.nodes) cell.centre = cell.centre + mesh.nodes[n];
        cell.centre = cell.centre * (1.0 / static_cast<double>(cell.nodes.size()));
    }
    for (GlobalMesh::Face& face : mesh.faces) {
        for (int n : face.nodes) face.centre = face.centre + mesh.nodes[n];
        face.centre = face.centre * (1.0 / static_cast<double>(face.nodes.size()));
        for (std::size_t i = 0; i < face.nodes.size(); ++i) {
            const Point& a = mesh.nodes[face.nodes[i]];
            const Point& b = mesh.nodes[face.nodes[(i + 1) % face.nodes.size()]];
            face.area = face.area + cross(a - face.centre, b - face.centre) * 0.5;
        }
        if (dot(face.area, face.centre - mesh.cells[face.first].centre) < 0.0) {
            face.area = face.area * -1.0;
        }
        for (int c : {face.first, face.second}) {
            if (c < 0) continue;
            GlobalMesh::Cell& cell = mesh.cells[c];
            cell.volume += std::fabs(dot(face.centre - cell.centre, face.area)) / 3.0;
        }
    }
}

}  // namespace

GlobalMesh buildBox(const CaseParameters& parameters, int variant) {
    BoxBuilder builder(parameters);
    builder.fill();
    GlobalMesh mesh;
    mesh.nodes = disturbed(builder.grid, parameters, variant);
    mesh.cells = std::move(builder.cells);
    addFaces(mesh, builder.grid, parameters);
    addGeometry(mesh);
    return mesh;
}

}  // namespace weldline::reference
