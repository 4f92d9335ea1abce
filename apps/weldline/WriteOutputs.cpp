#include "WriteOutputs.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "LineCsv.h"
#include "SummaryJson.h"
#include "base/AtomicFile.h"
#include "base/ReadFile.h"
#include "base/SignalsHeld.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"
#include "io/GatherResult.h"
#include "io/ResultPieces.h"
#include "io/WriteExodus.h"
#include "io/WriteLines.h"

namespace weldline {

namespace {

// The files of one rank.
class Files {
  public:
    void prepare(const std::string& file, const std::string& bytes) {
        if (file.empty()) return;
        m_files.push_back(std::make_unique<AtomicFile>(file));
        m_files.back()->write(bytes);
    }
    void prepareExodus(const std::string& file, const MeshResult& result) {
        m_files.push_back(std::make_unique<AtomicFile>(file));
        writeExodus(m_files.back()->path(), file, result.mesh, result.fields);
    }
    void finish() {
        for (const auto& file : m_files) file->finish();
    }
    void commit() {
        for (const auto& file : m_files) file->commit();
    }

  private:
    std::vector<std::unique_ptr<AtomicFile>> m_files;
};

// The library says nothing about a trace that it could not write; a whole one ends with the line
// of the last thing it does.
std::string wholeTrace(const std::string& file) {
    constexpr std::string_view end = "calWeldLine: ~CKVR3DWeldLine...Done!!\n";
    std::string trace;
    if (!readWholeFile(file, trace) || !trace.ends_with(end))
        failOnTemporary(file, "the trace of the calculation could not be written");
    return trace;
}

// What rank 0 writes beside the result.
void prepareCompanions(const Summary& summary, const FoundLines& found, const RunControl& control,
                       const TemporaryFolder& folder, Files& files) {
    const Outputs& outputs = summary.outputs;
    files.prepare(outputs.control, control.text);
    if (!outputs.trace.empty()) files.prepare(outputs.trace, wholeTrace(folder.traceFile()));
    if (!outputs.lines.empty())
        files.prepare(outputs.lines,
                      lineBytes(outputs.lines, summary.weldLines, found.shapes, found.mesh));
    if (outputs.csv != "-") files.prepare(outputs.csv, lineCsv(summary.weldLines));
    if (outputs.json != "-") files.prepare(outputs.json, summaryJson(summary));
}

// The piece of this rank, which keeps its name only if the pieces of all ranks get theirs.
class Piece {
  public:
    Piece(const std::string& name, const std::string& bytes) : m_name(name) {
        m_files.prepare(name, bytes);
        m_files.finish();
    }

    void commit(Ranks& ranks) {
        std::error_code none;
        const bool isNew = !std::filesystem::exists(m_name, none);
        bool isCommitted = false;
        try {
            agreeOnFailure(ranks, [&] {
                const SignalsHeld held;
                m_files.commit();
                isCommitted = true;
            });
        } catch (...) {
            if (isCommitted && isNew) std::filesystem::remove(m_name, none);
            throw;
        }
    }

  private:
    std::string m_name;
    Files m_files;
};

std::uint64_t shareKey(Ranks& ranks, const std::string& bytes) {
    std::vector<std::uint64_t> keys;
    for (const Bytes& message : gatherToAll(ranks, toBytes(std::vector{contentKey(bytes)})))
        keys.push_back(fromBytes<std::uint64_t>(message).front());
    return keyOfAll(keys);
}

}  // namespace

void writeOutputs(Ranks& ranks, const Summary& summary, const FoundLines& found,
                  const RunControl& control, const TemporaryFolder& folder, MeshPart part,
                  ResultFields fields) {
    const std::string& result = summary.outputs.result;
    const bool inPieces = isInPieces(result);
    MeshResult whole;
    if (inPieces || ranks.size() == 1) {
        whole = {std::move(part.mesh), std::move(fields)};
    } else if (!result.empty()) {
        whole =
            gatherResult(ranks, std::move(part), std::move(fields), summary.cells, summary.nodes);
    }
    const bool isExodus = isExodusName(result);
    const bool isWriter = !result.empty() && (inPieces || ranks.rank() == 0);
    std::string bytes = together(ranks, [&] {
        return isWriter && !isExodus ? resultBytes(result, whole.mesh, whole.fields)
                                     : std::string();
    });
    if (!isExodus) whole = {};
    const std::uint64_t key = inPieces ? shareKey(ranks, bytes) : 0;

    Files files;
    std::optional<Piece> piece;
    agreeOnFailure(ranks, [&] {
        if (ranks.rank() == 0 && isExodus)
            files.prepareExodus(result, whole);
        else if (ranks.rank() == 0)
            files.prepare(result, inPieces ? piecesText(result, key, ranks.size()) : bytes);
    });
    agreeOnFailure(ranks, [&] {
        if (inPieces) piece.emplace(pieceName(result, key, ranks.rank()), bytes);
        bytes = {};
        if (ranks.rank() == 0) prepareCompanions(summary, found, control, folder, files);
        files.finish();
    });
    // On purpose not while ranks wait for each other: the launcher ends them by a signal when one
    // of them is gone.
    std::optional<SignalsHeld> held;
    if (ranks.size() == 1) held.emplace();
    if (piece) piece->commit(ranks);
    agreeOnFailure(ranks, [&] {
        const SignalsHeld heldHere;
        files.commit();
    });
    if (inPieces && ranks.rank() == 0) removeOlderPieces(result, key, ranks.size());
}

}  // namespace weldline
