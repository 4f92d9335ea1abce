// Ranks: 1 2 3 4 8

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "GridMesh.h"
#include "InputForms.h"
#include "MpiTest.h"
#include "base/Errors.h"
#include "comm/Messages.h"
#include "comm/OneRank.h"
#include "io/DataSet.h"
#include "mesh/FvMesh.h"

// The parts of all ranks together are what one process reads, under the same numbers, whatever the
// form of the data set and the number of its pieces.

namespace weldline::test {

namespace {

namespace fs = std::filesystem;

// A folder of rank 0 that all ranks see.
class SharedFolder {
  public:
    explicit SharedFolder(Ranks& ranks) : m_ranks(ranks) {
        std::string name = (fs::temp_directory_path() / "mpi-read-XXXXXX").string();
        if (ranks.rank() == 0 && ::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        const Bytes told = broadcast(ranks, toBytes(std::vector<char>(name.begin(), name.end())));
        const std::vector<char> text = fromBytes<char>(told);
        m_path = std::string(text.begin(), text.end());
    }
    ~SharedFolder() {
        m_ranks.sum(0);  // nobody reads any more
        std::error_code none;
        if (m_ranks.rank() == 0) fs::remove_all(m_path, none);
    }
    const fs::path& path() const { return m_path; }

  private:
    Ranks& m_ranks;
    fs::path m_path;
};

MeshPart sample() {
    MeshPart whole = wholePart(gridMesh(6, 3, 3, 0.2, 7));
    const std::vector<float> times = meetingStreams(whole.mesh);
    whole.cellFields.emplace_back(times.begin(), times.end());
    return whole;
}

// Pieces as a simulation cuts them, with an empty one between.
std::vector<int> stretches(int cells, int pieces) {
    std::vector<int> partOfCell;
    for (int c = 0; c < cells; ++c) {
        const int part = static_cast<int>(std::int64_t{c} * pieces / cells);
        partOfCell.push_back(part == 1 && pieces > 3 ? 2 : part);
    }
    return partOfCell;
}

std::vector<std::vector<int>> facesOf(const Patch& patch) {
    std::vector<std::vector<int>> faces;
    for (int f = 0; f < patch.faces.count(); ++f) {
        faces.emplace_back(patch.faces[f].begin(), patch.faces[f].end());
        std::sort(faces.back().begin(), faces.back().end());
    }
    std::sort(faces.begin(), faces.end());
    return faces;
}

void checkPoints(const DataPart& own, const DataPart& whole) {
    const MeshPart& part = own.part;
    ASSERT_EQ(part.mesh.points.size(), part.nodeNumber.size());
    EXPECT_TRUE(std::is_sorted(part.nodeNumber.begin(), part.nodeNumber.end()));
    for (std::size_t p = 0; p < part.nodeNumber.size(); ++p) {
        const Vec3 there = whole.part.mesh.points[static_cast<std::size_t>(part.nodeNumber[p])];
        const Vec3 here = part.mesh.points[p];
        ASSERT_TRUE(here.x == there.x && here.y == there.y && here.z == there.z) << p;
    }
}

std::vector<int> wholeNodes(const MeshPart& part, std::span<const int> nodes) {
    std::vector<int> numbers;
    for (const int node : nodes)
        numbers.push_back(static_cast<int>(part.nodeNumber[static_cast<std::size_t>(node)]));
    return numbers;
}

std::vector<std::vector<int>> wholePolygons(const MeshPart& part, int cell) {
    std::vector<std::vector<int>> polygons;
    for (const int polygon : part.mesh.cellPolygons[cell])
        polygons.push_back(wholeNodes(part, part.mesh.polygons[polygon]));
    return polygons;
}

void checkCells(const DataPart& own, const DataPart& whole) {
    const MeshPart& part = own.part;
    ASSERT_EQ(part.cellFields.size(), whole.part.cellFields.size());
    for (int c = 0; c < part.mesh.cellCount(); ++c) {
        const auto here = static_cast<std::size_t>(c);
        const auto number = static_cast<int>(part.cellNumber[here]);
        const auto there = static_cast<std::size_t>(number);
        ASSERT_EQ(part.mesh.kinds[here], whole.part.mesh.kinds[there]);
        ASSERT_EQ(wholeNodes(part, part.mesh.cellNodes[c]),
                  wholeNodes(whole.part, whole.part.mesh.cellNodes[number]));
        ASSERT_EQ(wholePolygons(part, c), wholePolygons(whole.part, number));
        for (std::size_t f = 0; f < part.cellFields.size(); ++f)
            ASSERT_EQ(part.cellFields[f][here], whole.part.cellFields[f][there]);
        ASSERT_EQ(part.fileNumber(c), whole.part.fileNumber(number));
    }
}

// Every cell is somewhere once, every point at least once, and every patch face once.
void checkSums(Ranks& ranks, const DataPart& own, const DataPart& whole) {
    std::vector<std::int64_t> cells;
    std::vector<std::int64_t> nodes;
    std::vector<Patch> patches(own.part.patches.size());
    for (const Bytes& message : gatherToAll(ranks, toBytes(own.part.cellNumber)))
        for (const std::int64_t cell : fromBytes<std::int64_t>(message)) cells.push_back(cell);
    for (const Bytes& message : gatherToAll(ranks, toBytes(own.part.nodeNumber)))
        for (const std::int64_t node : fromBytes<std::int64_t>(message)) nodes.push_back(node);
    std::sort(cells.begin(), cells.end());
    EXPECT_EQ(cells, whole.part.cellNumber);
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    EXPECT_EQ(nodes, whole.part.nodeNumber);
    EXPECT_EQ(own.cells, static_cast<std::int64_t>(whole.part.cellNumber.size()));
    EXPECT_EQ(own.nodes, static_cast<std::int64_t>(whole.part.nodeNumber.size()));

    ASSERT_EQ(own.part.patches.size(), whole.part.patches.size());
    for (std::size_t p = 0; p < own.part.patches.size(); ++p) {
        const Patch& patch = own.part.patches[p];
        EXPECT_EQ(patch.name, whole.part.patches[p].name);
        std::vector<int> message;
        for (int f = 0; f < patch.faces.count(); ++f) {
            message.push_back(static_cast<int>(patch.faces[f].size()));
            for (const int node : wholeNodes(own.part, patch.faces[f])) message.push_back(node);
        }
        Patch all;
        for (const Bytes& bytes : gatherToAll(ranks, toBytes(message))) {
            const std::vector<int> list = fromBytes<int>(bytes);
            for (std::size_t at = 0; at < list.size();) {
                const auto corners = static_cast<std::size_t>(list[at]);
                all.faces.append(std::span(list).subspan(at + 1, corners));
                at += corners + 1;
            }
        }
        EXPECT_EQ(facesOf(all), facesOf(whole.part.patches[p])) << patch.name;
    }
}

void checkReading(Ranks& ranks, const std::string& file, const MeshPart& written) {
    SCOPED_TRACE(file);
    OneRank alone;
    ReadOptions options;
    const bool isCase = file.ends_with(".foam");
    options.cellArrays = {isCase ? "fillTime" : "FillTime"};
    const DataPart whole = readPart(alone, file, options);
    EXPECT_EQ(whole.part.mesh.points.size(), written.mesh.points.size());
    EXPECT_EQ(buildFvMesh(whole.part.mesh).innerFaces, buildFvMesh(written.mesh).innerFaces);
    const DataPart own = readPart(ranks, file, options);
    EXPECT_EQ(own.fieldName, whole.fieldName);
    EXPECT_EQ(own.time, whole.time);
    EXPECT_EQ(own.remarks, whole.remarks);
    checkPoints(own, whole);
    checkCells(own, whole);
    checkSums(ranks, own, whole);
}

}  // namespace

TEST(ReadParts, give_the_whole_in_every_form) {
    const auto ranks = mpiSession().world();
    const MeshPart whole = sample();
    const int cells = whole.mesh.cellCount();
    for (const int pieces : {2, 3, 5, 8}) {
        const SharedFolder folder(*ranks);
        const std::vector<int> partOfCell = stretches(cells, pieces);
        const InputForms forms(folder.path(), whole, partOfCell, pieces);
        if (ranks->rank() == 0) forms.all();
        ranks->sum(0);  // the files are there
        for (const char* file : {"whole.vtu", "pieces.pvtu", "ghosts.pvtu", "blocks.vtm",
                                 "case/case.foam", "decomposed/decomposed.foam"})
            checkReading(*ranks, (folder.path() / file).string(), whole);
    }
}

// Every rank has about its share of the cells, in fewer pieces than ranks, too.
TEST(ReadParts, leave_no_rank_without_its_share) {
    const auto ranks = mpiSession().world();
    const SharedFolder folder(*ranks);
    const MeshPart whole = sample();
    const std::int64_t cells = whole.mesh.cellCount();
    const std::vector<int> partOfCell = stretches(whole.mesh.cellCount(), 2);
    if (ranks->rank() == 0) InputForms(folder.path(), whole, partOfCell, 2).all();
    ranks->sum(0);
    for (const char* file : {"whole.vtu", "pieces.pvtu", "decomposed/decomposed.foam"}) {
        const DataPart own = readPart(*ranks, (folder.path() / file).string(), {});
        EXPECT_GT(own.part.mesh.cellCount(), 0) << file;
        // METIS balances faces, not cells, and the pieces differ a little.
        EXPECT_LT(own.part.mesh.cellCount() * ranks->size(), 2 * cells + ranks->size()) << file;
    }
}

TEST(ReadParts, fail_together) {
    const auto ranks = mpiSession().world();
    const SharedFolder folder(*ranks);
    const MeshPart whole = sample();
    const std::vector<int> partOfCell = stretches(whole.mesh.cellCount(), 3);
    if (ranks->rank() == 0) {
        InputForms(folder.path(), whole, partOfCell, 3).pvtu();
        fs::remove(folder.path() / "pieces2.vtu");
    }
    ranks->sum(0);
    const std::string file = (folder.path() / "pieces.pvtu").string();
    try {
        readPart(*ranks, file, {});
        ADD_FAILURE() << "read";
    } catch (const InputError& error) {
        EXPECT_EQ(error.what(), "'" + (folder.path() / "pieces2.vtu").string() + "': no such file");
    }
}

}  // namespace weldline::test
