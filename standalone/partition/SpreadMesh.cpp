#include "SpreadMesh.h"

#include <algorithm>
#include <optional>

#include "CutMesh.h"
#include "PackMeshPart.h"
#include "SplitMesh.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"

namespace weldline {

namespace {

std::vector<std::int64_t> cellsOfRanks(Ranks& ranks, const MeshPart& part) {
    std::vector<std::int64_t> cells;
    for (const Bytes& message :
         gatherToAll(ranks, toBytes(std::vector<std::int64_t>{part.mesh.cellCount()})))
        cells.push_back(fromBytes<std::int64_t>(message).front());
    return cells;
}

std::vector<int> helpersOf(const std::vector<int>& helped, int rank) {
    std::vector<int> helpers;
    for (std::size_t r = 0; r < helped.size(); ++r)
        if (helped[r] == rank) helpers.push_back(static_cast<int>(r));
    return helpers;
}

int longestQueue(const std::vector<int>& helped) {
    std::size_t longest = 0;
    for (std::size_t r = 0; r < helped.size(); ++r)
        longest = std::max(longest, helpersOf(helped, static_cast<int>(r)).size());
    return static_cast<int>(longest);
}

}  // namespace

std::vector<int> chooseHelpers(const std::vector<std::int64_t>& cells) {
    std::vector<std::int64_t> parts(cells.size(), 1);
    std::vector<int> helped(cells.size(), -1);
    for (std::size_t r = 0; r < cells.size(); ++r) {
        if (cells[r] > 0) continue;
        std::size_t most = 0;
        for (std::size_t other = 1; other < cells.size(); ++other)
            if (cells[other] * parts[most] > cells[most] * parts[other]) most = other;
        if (cells[most] <= parts[most]) continue;
        ++parts[most];
        helped[r] = static_cast<int>(most);
    }
    return helped;
}

void spreadMesh(Ranks& ranks, MeshPart& part) {
    const std::vector<int> helped = chooseHelpers(cellsOfRanks(ranks, part));
    const int rounds = longestQueue(helped);
    if (rounds == 0) return;
    const std::vector<int> helpers = helpersOf(helped, ranks.rank());
    const auto parts = static_cast<int>(helpers.size()) + 1;
    std::vector<int> partOfCell;
    std::optional<MeshSplitter> splitter;
    agreeOnFailure(ranks, [&] {
        if (helpers.empty()) return;
        partOfCell = cutMesh(part.mesh, parts);
        splitter.emplace(part, partOfCell, parts);
    });
    const int giver = helped[static_cast<std::size_t>(ranks.rank())];
    for (int round = 0; round < rounds; ++round) {
        std::vector<Bytes> messages(static_cast<std::size_t>(ranks.size()));
        if (round + 1 < parts) {
            const auto helper = static_cast<std::size_t>(helpers[static_cast<std::size_t>(round)]);
            messages[helper] = packMeshPart(splitter->part(round + 1));
        }
        messages = ranks.exchange(std::move(messages));
        if (giver < 0) continue;
        const Bytes& message = messages[static_cast<std::size_t>(giver)];
        if (!message.empty()) part = unpackMeshPart(message);
    }
    if (splitter) {
        MeshPart own = splitter->part(0);
        splitter.reset();
        part = std::move(own);
    }
}

}  // namespace weldline
