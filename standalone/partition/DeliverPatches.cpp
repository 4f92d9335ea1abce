#include "DeliverPatches.h"

#include <algorithm>

#include "PatchFaceCells.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"
#include "mesh/MeshFaults.h"

namespace weldline {

namespace {

using Lists = std::vector<std::vector<std::int64_t>>;  // per rank

Lists emptyLists(const Ranks& ranks) {
    return Lists(static_cast<std::size_t>(ranks.size()));
}

std::size_t homeOf(std::int64_t node, const Ranks& ranks) {
    return static_cast<std::size_t>(node % ranks.size());
}

// The points of this rank at a face's corners; empty where it lacks one.
std::vector<int> localCorners(const MeshPart& part, std::span<const std::int64_t> corners) {
    std::vector<int> local;
    for (const std::int64_t node : corners) {
        const auto found = std::lower_bound(part.nodeNumber.begin(), part.nodeNumber.end(), node);
        if (found == part.nodeNumber.end() || *found != node) return {};
        local.push_back(static_cast<int>(found - part.nodeNumber.begin()));
    }
    return local;
}

// Puts those of the faces that a cell of this rank has into its patches; answers which they are.
std::vector<bool> takeFaces(const PatchFaces& faces, MeshPart& part) {
    MeshPart candidates;
    std::swap(candidates.mesh, part.mesh);
    candidates.patches.resize(part.patches.size());
    std::vector<std::vector<std::size_t>> faceOf(part.patches.size());
    for (std::size_t f = 0; f < faces.count(); ++f) {
        const std::vector<int> corners = localCorners(part, faces.corners(f));
        if (corners.empty()) continue;
        const auto patch = static_cast<std::size_t>(faces.patch[f]);
        candidates.patches[patch].faces.append(corners);
        faceOf[patch].push_back(f);
    }
    const auto cells = cellsOfPatchFaces(candidates);
    std::swap(candidates.mesh, part.mesh);
    std::vector<bool> taken(faces.count(), false);
    for (std::size_t p = 0; p < cells.size(); ++p)
        for (std::size_t i = 0; i < cells[p].size(); ++i) {
            if (cells[p][i] == faceOfNoCell) continue;
            taken[faceOf[p][i]] = true;
            part.patches[p].faces.append(candidates.patches[p].faces[static_cast<int>(i)]);
        }
    return taken;
}

// Per given node the ranks that have it as a point. Every rank tells the nodes that it has to the
// rank that they are dealt to, which answers the questions.
std::vector<std::vector<int>> ranksWithNodes(Ranks& ranks, const std::vector<std::int64_t>& own,
                                             const std::vector<std::int64_t>& asked) {
    Lists messages = emptyLists(ranks);
    for (const std::int64_t node : own) messages[homeOf(node, ranks)].push_back(node);
    std::vector<std::pair<std::int64_t, int>> holders;
    messages = exchangeValues(ranks, messages);
    for (std::size_t r = 0; r < messages.size(); ++r)
        for (const std::int64_t node : messages[r]) holders.emplace_back(node, static_cast<int>(r));
    std::sort(holders.begin(), holders.end());

    messages = emptyLists(ranks);
    for (const std::int64_t node : asked) messages[homeOf(node, ranks)].push_back(node);
    Lists answers;  // per question the number of ranks, then these
    for (const auto& questions : exchangeValues(ranks, messages)) {
        std::vector<std::int64_t>& answer = answers.emplace_back();
        for (const std::int64_t node : questions) {
            const auto begin =
                std::lower_bound(holders.begin(), holders.end(), std::pair{node, -1});
            const auto end = std::lower_bound(begin, holders.end(), std::pair{node + 1, -1});
            answer.push_back(end - begin);
            for (auto it = begin; it != end; ++it) answer.push_back(it->second);
        }
    }
    answers = exchangeValues(ranks, answers);
    std::vector<std::size_t> next(answers.size(), 0);
    std::vector<std::vector<int>> found;
    for (const std::int64_t node : asked) {
        const std::vector<std::int64_t>& answer = answers[homeOf(node, ranks)];
        std::size_t& at = next[homeOf(node, ranks)];
        std::vector<int>& list = found.emplace_back();
        for (std::int64_t left = answer[at++]; left > 0; --left)
            list.push_back(static_cast<int>(answer[at++]));
    }
    return found;
}

// Face by face its patch, number, number of corners and corners.
void unpackFaces(const std::vector<std::int64_t>& message, PatchFaces& faces) {
    for (std::size_t at = 0; at < message.size();) {
        const auto patch = static_cast<int>(message[at]);
        const auto number = static_cast<int>(message[at + 1]);
        const auto corners = static_cast<std::size_t>(message[at + 2]);
        faces.append(patch, number, std::span(message).subspan(at + 3, corners));
        at += 3 + corners;
    }
}

void packFace(const PatchFaces& faces, std::size_t face, std::vector<std::int64_t>& message) {
    const std::span<const std::int64_t> corners = faces.corners(face);
    message.insert(message.end(), {faces.patch[face], faces.number[face],
                                   static_cast<std::int64_t>(corners.size())});
    message.insert(message.end(), corners.begin(), corners.end());
}

// Takes what the ranks sent; answers each, per face, 1 where it was taken and 0 where not.
Lists takeAll(const Lists& messages, MeshPart& part) {
    PatchFaces faces;
    std::vector<std::size_t> ends;
    for (const std::vector<std::int64_t>& message : messages) {
        unpackFaces(message, faces);
        ends.push_back(faces.count());
    }
    const std::vector<bool> taken = takeFaces(faces, part);
    Lists answers;
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        std::vector<std::int64_t>& answer = answers.emplace_back();
        for (std::size_t f = begin; f < end; ++f) answer.push_back(taken[f] ? 1 : 0);
        begin = end;
    }
    return answers;
}

// Sends each face to all ranks that have its first corner; answers how many of them took it.
std::vector<std::int64_t> sendFaces(Ranks& ranks, const PatchFaces& faces, MeshPart& part) {
    std::vector<std::int64_t> firstCorners;
    for (std::size_t f = 0; f < faces.count(); ++f)
        firstCorners.push_back(faces.corners(f).empty() ? 0 : faces.corners(f).front());
    const auto holders = ranksWithNodes(ranks, part.nodeNumber, firstCorners);
    Lists messages = emptyLists(ranks);
    for (std::size_t f = 0; f < faces.count(); ++f)
        for (const int rank : holders[f])
            packFace(faces, f, messages[static_cast<std::size_t>(rank)]);
    messages = exchangeValues(ranks, messages);
    messages = exchangeValues(ranks, together(ranks, [&] { return takeAll(messages, part); }));
    std::vector<std::int64_t> takers(faces.count(), 0);
    std::vector<std::size_t> next(messages.size(), 0);
    for (std::size_t f = 0; f < faces.count(); ++f)
        for (const int rank : holders[f]) {
            const auto r = static_cast<std::size_t>(rank);
            takers[f] += messages[r][next[r]++];
        }
    return takers;
}

}  // namespace

std::span<const std::int64_t> PatchFaces::corners(std::size_t face) const {
    return std::span(nodes).subspan(static_cast<std::size_t>(offsets[face]),
                                    static_cast<std::size_t>(offsets[face + 1] - offsets[face]));
}

void PatchFaces::append(int ofPatch, int withNumber, std::span<const std::int64_t> corners) {
    patch.push_back(ofPatch);
    number.push_back(withNumber);
    nodes.insert(nodes.end(), corners.begin(), corners.end());
    offsets.push_back(static_cast<std::int64_t>(nodes.size()));
}

void deliverPatchFaces(Ranks& ranks, const PatchFaces& faces, MeshPart& part) {
    if (ranks.size() == 1) {
        for (std::size_t f = 0; f < faces.count(); ++f)
            part.patches[static_cast<std::size_t>(faces.patch[f])].faces.append(
                localCorners(part, faces.corners(f)));
        return;
    }
    const std::vector<bool> taken = together(ranks, [&] { return takeFaces(faces, part); });
    PatchFaces others;
    for (std::size_t f = 0; f < faces.count(); ++f)
        if (!taken[f]) others.append(faces.patch[f], faces.number[f], faces.corners(f));
    if (ranks.sum(static_cast<std::int64_t>(others.count())) == 0) return;
    const std::vector<std::int64_t> takers = sendFaces(ranks, others, part);
    agreeOnFailure(ranks, [&] {
        for (std::size_t f = 0; f < others.count(); ++f)
            if (takers[f] != 1)
                failOnForeignFace(part.patches[static_cast<std::size_t>(others.patch[f])],
                                  others.number[f]);
    });
}

}  // namespace weldline
