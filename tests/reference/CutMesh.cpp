#include "CutMesh.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Data = PartitionData;

double distance(const Point& a, const Point& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

// The partition of each cell: slabs along x with ragged edges, none of them empty.
std::vector<int> assignCells(const GlobalMesh& mesh, const CaseParameters& p, int& partitions) {
    const int cells = static_cast<int>(mesh.cells.size());
    partitions = std::min(p.partitions, cells);
    Random random(p.seed, Streams::cut);
    std::vector<int> part(cells);
    for (int c = 0; c < cells; ++c) {
        const int slab = c * partitions / cells;
        part[c] = random.chance(0.2) ? random.integer(0, partitions - 1) : slab;
    }
    for (int q = 0; q < partitions; ++q) {
        part[q * cells / partitions] = q;
    }
    return part;
}

// The group of each boundary face.
std::vector<int> assignGroups(const GlobalMesh& mesh, const CaseParameters& p) {
    Random random(p.seed, Streams::groups);
    std::vector<int> groups;
    for (const GlobalMesh::Face& face : mesh.faces) {
        const int bit = face.side < 0 ? 0 : 1 << face.side;
        int group = Data::wall;
        if (p.outletSides & bit) group = Data::outlet;
        if (p.inletSides & bit) group = Data::inlet;
        if (p.symmetrySides & bit) group = Data::symmetry;
        if (random.chance(p.groupMix / 100.0)) group = random.integer(0, Data::groupCount - 1);
        groups.push_back(group);
    }
    return groups;
}

// Builds the arrays of one partition.
class Cutter {
  public:
    Cutter(const GlobalMesh& mesh, const CaseParameters& p, const std::vector<int>& part,
           const std::vector<int>& groups, int own, int variant)
        : mesh_(mesh),
          p_(p),
          part_(part),
          groups_(groups),
          own_(own),
          random_(p.seed, Streams::numbering + 10 * own + variant) {}

    Data cut(std::vector<int>& origin) {
        numberCells();
        numberNodes();
        numberFaces();
        addBoundaryFaces();
        addOtherFaces();
        addRows();
        data_.slots = static_cast<int>(origin_.size()) - 1;
        placeSlots();
        origin = origin_;
        return std::move(data_);
    }

    int localCell(int globalCell) const { return local_.at(globalCell); }
    const std::vector<std::pair<int, int>>& haloCells() const { return haloCells_; }

  private:
    void mix(std::vector<int>& order) {
        if (p_.renumber == 1) random_.shuffle(order);
    }

    void numberCells() {
        std::vector<int> order;
        for (int c = 0; c < static_cast<int>(mesh_.cells.size()); ++c) {
            if (part_[c] == own_) order.push_back(c);
        }
        mix(order);
        for (int c : order) {
            origin_.push_back(c);
            local_[c] = ++data_.cells;
        }
        faceLists_.resize(data_.cells + 1);
        neighbours_.resize(data_.cells + 1);
    }

    void numberNodes() {
        std::vector<int> order;
        for (const auto& [c, number] : local_) {
            order.insert(order.end(), mesh_.cells[c].nodes.begin(), mesh_.cells[c].nodes.end());
        }
        std::sort(order.begin(), order.end());
        order.erase(std::unique(order.begin(), order.end()), order.end());
        mix(order);
        data_.nodeX = data_.nodeY = data_.nodeZ = {poisonReal};
        for (int n : order) {
            nodes_[n] = ++data_.nodes;
            data_.nodeX.push_back(mesh_.nodes[n].x);
            data_.nodeY.push_back(mesh_.nodes[n].y);
            data_.nodeZ.push_back(mesh_.nodes[n].z);
        }
    }

    void numberFaces() {
        faceOrder_.resize(mesh_.faces.size());
        std::iota(faceOrder_.begin(), faceOrder_.end(), 0);
        mix(faceOrder_);
    }

    bool isOwn(int cell) const { return cell >= 0 && part_[cell] == own_; }

    void list(int cell, int face, int type) { faceLists_[cell].push_back({face, type}); }

    void addBoundaryFaces() {
        for (int kind = 0; kind < Data::groupCount; ++kind) {
            Data::Group& g = data_.group[kind];
            for (int f : faceOrder_) {
                const GlobalMesh::Face& face = mesh_.faces[f];
                if (face.second >= 0 || !isOwn(face.first) || groups_[f] != kind) continue;
                g.xc.push_back(face.centre.x);
                g.yc.push_back(face.centre.y);
                g.zc.push_back(face.centre.z);
                g.sx.push_back(face.area.x);
                g.sy.push_back(face.area.y);
                g.sz.push_back(face.area.z);
                g.cell.push_back(local_[face.first]);
                g.slot.push_back(static_cast<int>(origin_.size()));
                origin_.push_back(face.first);
                list(local_[face.first], g.count(), kind + 1);
            }
        }
    }

    void addOtherFaces() {
        data_.innerFace = {Data::Reals(9, poisonReal)};
        data_.lambda = {poisonReal};
        for (int f : faceOrder_) {
            const GlobalMesh::Face& face = mesh_.faces[f];
            if (face.second < 0) continue;
            if (isOwn(face.first) && isOwn(face.second)) {
                addInnerFace(face);
            } else if (isOwn(face.first)) {
                addInterfaceFace(face, face.first, face.second, 1.0);
            } else if (isOwn(face.second)) {
                addInterfaceFace(face, face.second, face.first, -1.0);
            }
        }
    }

    double weight(const GlobalMesh::Face& face, int near, int far) const {
        const double a = distance(face.centre, mesh_.cells[near].centre);
        const double b = distance(face.centre, mesh_.cells[far].centre);
        return a / (a + b);
    }

    void addInnerFace(const GlobalMesh::Face& face) {
        const auto fraction = [&] {
            return random_.chance(p_.fractions / 100.0) ? random_.real(0.0, 0.99) : 0.0;
        };
        const int a = local_[face.first];
        const int b = local_[face.second];
        data_.innerFace.push_back({poisonReal, a + fraction(), b + fraction(), face.area.x,
                                   face.area.y, face.area.z, face.centre.x, face.centre.y,
                                   face.centre.z});
        data_.lambda.push_back(weight(face, face.first, face.second));
        list(a, data_.innerFaces(), 0);
        list(b, data_.innerFaces(), 0);
        neighbours_[a].push_back(b);
        neighbours_[b].push_back(a);
    }

    void addInterfaceFace(const GlobalMesh::Face& face, int own, int far, double sign) {
        if (!haloSlot_.contains(far)) {
            haloSlot_[far] = static_cast<int>(origin_.size());
            haloCells_.push_back({haloSlot_[far], far});
            origin_.push_back(far);
        }
        Data::Interface& i = data_.interface;
        i.cell.push_back(local_[own]);
        i.halo.push_back(haloSlot_[far]);
        i.xc.push_back(face.centre.x);
        i.yc.push_back(face.centre.y);
        i.zc.push_back(face.centre.z);
        i.sx.push_back(face.area.x * sign);
        i.sy.push_back(face.area.y * sign);
        i.sz.push_back(face.area.z * sign);
        i.lambda.push_back(weight(face, own, far));
        std::vector<int> row = {static_cast<int>(face.nodes.size())};
        for (int n : face.nodes) row.push_back(nodes_[n]);
        i.nodes.push_back(row);
        list(local_[own], i.count(), 101);
        neighbours_[local_[own]].push_back(haloSlot_[far]);
    }

    void addRows() {
        data_.cellNode = data_.cellFace = data_.cellFaceType = data_.cellNeighbour = {{}};
        for (int c = 1; c <= data_.cells; ++c) {
            const std::vector<int>& nodes = mesh_.cells[origin_[c]].nodes;
            std::vector<int> row = {static_cast<int>(nodes.size())};
            for (int n : nodes) row.push_back(nodes_[n]);
            data_.cellNode.push_back(row);
            auto& faces = faceLists_[c];
            if (p_.renumber == 1) random_.shuffle(faces);
            const int count = static_cast<int>(faces.size());
            data_.cellFace.push_back({count});
            data_.cellFaceType.push_back({count});
            for (const auto& [face, type] : faces) {
                data_.cellFace.back().push_back(face);
                data_.cellFaceType.back().push_back(type);
            }
            row = neighbours_[c];
            row.insert(row.begin(), static_cast<int>(neighbours_[c].size()));
            data_.cellNeighbour.push_back(row);
        }
    }

    // Centres and volumes: of the cell itself and of halo cells; boundary slots have the face
    // centre and the volume zero.
    void placeSlots() {
        data_.xc = data_.yc = data_.zc = data_.volume = {poisonReal};
        for (int s = 1; s <= data_.slots; ++s) {
            const GlobalMesh::Cell& cell = mesh_.cells[origin_[s]];
            data_.xc.push_back(cell.centre.x);
            data_.yc.push_back(cell.centre.y);
            data_.zc.push_back(cell.centre.z);
            data_.volume.push_back(cell.volume);
        }
        for (const Data::Group& g : data_.group) {
            for (int i = 1; i <= g.count(); ++i) {
                data_.xc[g.slot[i]] = g.xc[i];
                data_.yc[g.slot[i]] = g.yc[i];
                data_.zc[g.slot[i]] = g.zc[i];
                data_.volume[g.slot[i]] = 0.0;
            }
        }
    }

    const GlobalMesh& mesh_;
    const CaseParameters& p_;
    const std::vector<int>& part_;
    const std::vector<int>& groups_;
    int own_;
    Random random_;
    Data data_;
    std::vector<int> origin_ = {-1};
    std::map<int, int> local_, nodes_, haloSlot_;
    std::vector<int> faceOrder_;
    std::vector<std::vector<std::pair<int, int>>> faceLists_;
    std::vector<std::vector<int>> neighbours_;
    std::vector<std::pair<int, int>> haloCells_;
};

}  // namespace

std::vector<PartitionData> cutBox(const GlobalMesh& mesh, const CaseParameters& parameters,
                                  int variant, std::vector<std::vector<int>>& origin) {
    int partitions = 0;
    const std::vector<int> part = assignCells(mesh, parameters, partitions);
    const std::vector<int> groups = assignGroups(mesh, parameters);
    std::vector<Cutter> cutters;
    std::vector<PartitionData> result;
    origin.assign(partitions, {});
    for (int q = 0; q < partitions; ++q) {
        cutters.emplace_back(mesh, parameters, part, groups, q, variant);
        result.push_back(cutters.back().cut(origin[q]));
    }
    for (int q = 0; q < partitions; ++q) {
        for (const auto& [slot, cell] : cutters[q].haloCells()) {
            result[q].halo.push_back({slot, part[cell], cutters[part[cell]].localCell(cell)});
        }
    }
    return result;
}

}  // namespace weldline::reference
