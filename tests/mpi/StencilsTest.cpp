// Stencils of the face interpolation on cut meshes; the ranks are threads.

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "CutRun.h"
#include "GridMesh.h"
#include "bind/HostModel.h"
#include "comm/ThreadRanks.h"
#include "partition/SplitMesh.h"
#include "rbf/FaceStencils.h"

namespace weldline::test {

namespace {

// Per inner face, named by its two cells, the cells of its stencil; numbers of the whole mesh.
using Stencils = std::map<std::set<std::int64_t>, std::set<std::int64_t>>;

Stencils stencilsOf(HostModel& model, const std::vector<std::int64_t>& numberOfSlot) {
    FaceStencils stencils(model.mesh(), &model.globalVariables(), &model.partitionFaces());
    Stencils result;
    for (int f = 1; f <= model.mesh().m_nInnerFace; ++f) {
        std::set<std::int64_t> cells;
        for (const int slot : stencils.choose(f))
            cells.insert(numberOfSlot[static_cast<std::size_t>(slot)]);
        const double* row = model.mesh().m_ppInnerFace[f];
        result[{numberOfSlot[static_cast<std::size_t>(row[1])],
                numberOfSlot[static_cast<std::size_t>(row[2])]}] = cells;
    }
    return result;
}

HostOptions named() {
    HostOptions options;
    options.controlFile = "run.cmp";
    return options;
}

Stencils stencilsOfRank(Ranks& ranks, const MeshPart& part) {
    FvMesh mesh = buildFvMesh(part.mesh);
    const MeshInterface interface = joinParts(ranks, part, mesh);
    const std::vector<float> times(part.cellNumber.size(), 1.0F);
    HostModel model(mesh, groupBoundaryFaces(mesh, part.patches, {}), times, named(),
                    {ranks, interface, part.nodeNumber});
    std::vector<std::int64_t> numbers{-1};
    numbers.insert(numbers.end(), part.cellNumber.begin(), part.cellNumber.end());
    numbers.resize(numbers.size() + static_cast<std::size_t>(mesh.boundaryFaces()), -1);
    for (const HaloCell& cell : interface.halo) numbers.push_back(cell.number);
    return stencilsOf(model, numbers);
}

}  // namespace

// On hexahedra the cells around a face are at most 12, none of which needs a second step: every
// rank interpolates its inner faces from the very cells of the uncut mesh, behind interfaces, too.
TEST(Stencils, of_hexahedra_reach_into_the_halo) {
    const MeshPart whole = wholePart(hexahedraMesh(6, 5, 4));
    const FvMesh mesh = buildFvMesh(whole.mesh);
    const std::vector<float> times(whole.cellNumber.size(), 1.0F);
    HostModel uncut(mesh, groupBoundaryFaces(mesh, whole.patches, {}), times, named());
    std::vector<std::int64_t> numbers{-1};
    numbers.insert(numbers.end(), whole.cellNumber.begin(), whole.cellNumber.end());
    numbers.resize(numbers.size() + static_cast<std::size_t>(mesh.boundaryFaces()), -1);
    const Stencils expected = stencilsOf(uncut, numbers);

    std::vector<int> partOfCell;
    for (int c = 0; c < 120; ++c) partOfCell.push_back((c % 6 < 3 ? 0 : 1) + (c < 60 ? 0 : 2));
    MeshSplitter splitter(whole, partOfCell, 4);
    std::vector<MeshPart> parts;
    for (int r = 0; r < 4; ++r) parts.push_back(splitter.part(r));
    runAsThreads(4, [&](Ranks& ranks) {
        for (const auto& [face, cells] :
             stencilsOfRank(ranks, parts[static_cast<std::size_t>(ranks.rank())]))
            EXPECT_EQ(cells, expected.at(face));
    });
}

}  // namespace weldline::test
