#include "Outputs.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <system_error>
#include <vector>

#include "base/AtomicFile.h"
#include "base/Errors.h"
#include "base/ReadFile.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"
#include "comm/Packing.h"
#include "io/ResultPieces.h"
#include "io/WriteExodus.h"

namespace weldline {

namespace {

namespace fs = std::filesystem;

// What cannot be looked at counts as existing: then it is not replaced without a further look.
bool exists(const std::string& file) {
    std::error_code error;
    return fs::status(file, error).type() != fs::file_type::not_found &&
           error != std::errc::filename_too_long;
}

// Whether two names lead to the same file, also before it exists and by links.
bool sameFile(const std::string& a, const std::string& b) {
    std::error_code none;
    if (fs::equivalent(a, b, none)) return true;
    const fs::path first = fs::weakly_canonical(a, none);
    const fs::path second = fs::weakly_canonical(b, none);
    return !first.empty() && first == second;
}

void checkResultName(const std::string& result) {
    const fs::path name = fs::path(result).filename();
    if (name.extension() != ".vtu" && name.extension() != ".pvtu" && !isExodusName(name))
        throw UsageError(result +
                         ": not a name for the result; -o needs a file that ends in .vtu, .pvtu, "
                         "or for Exodus in .exo, .e or .ex2");
}

// The library of the format wants to move about in its file.
void refuseStream(const std::string& result) {
    std::error_code none;
    if (isExodusName(result) && fs::exists(result, none) && !fs::is_regular_file(result, none))
        throw UsageError(result + ": no regular file, and an Exodus file needs one");
}

void checkLinesName(const std::string& lines) {
    if (fs::path(lines).filename().extension() != ".vtp")
        throw UsageError(lines +
                         ": not a name for the lines; --lines needs a file that ends in .vtp");
}

// Mesh, settings and times of a case stand in folders beside its .foam file.
bool isInCase(const std::string& file, const std::string& foam) {
    std::error_code none;
    const fs::path folder = fs::weakly_canonical(foam, none).parent_path();
    const fs::path inside = fs::weakly_canonical(file, none).lexically_relative(folder);
    if (inside.empty() || std::distance(inside.begin(), inside.end()) < 2) return false;
    const std::string first = inside.begin()->string();
    const bool isTime = first.find_first_not_of("0123456789.e-+") == std::string::npos;
    return first == "constant" || first == "system" || first.starts_with("processor") ||
           (isTime && first != "..");
}

// The input and the pieces that it names: a .pvtu or .vtm file lists other files of its folder.
bool isPartOfInput(const std::string& output, const std::string& input) {
    if (sameFile(output, input)) return true;
    const std::string kind = fs::path(input).extension().string();
    if (kind == ".foam") return exists(output) && isInCase(output, input);
    if ((kind != ".pvtu" && kind != ".vtm" && kind != ".pvd") || !exists(output)) return false;
    std::string text;
    if (!readWholeFile(input, text))
        throw InputError("'" + input + "': the file cannot be read (" +
                         std::generic_category().message(errno) + ")");
    return text.find(fs::path(output).filename().string()) != std::string::npos;
}

// Files of a plan in the order in which they are checked.
std::vector<std::string> filesOf(const Outputs& outputs) {
    std::vector<std::string> files;
    for (const std::string& file :
         {outputs.result, outputs.json == "-" ? "" : outputs.json, outputs.control, outputs.trace,
          outputs.lines, outputs.csv == "-" ? "" : outputs.csv})
        if (!file.empty()) files.push_back(file);
    return files;
}

void refuseInput(const std::string& output, const std::string& input) {
    if (isPartOfInput(output, input))
        throw UsageError(output + ": the output would replace the input; give it another name");
}

// A new result in pieces takes away the pieces of the old one, whoever names them.
void refusePieces(const std::string& result, const std::string& input) {
    std::vector<std::string> names{fs::path(input).filename().string()};
    std::string text;
    const std::string kind = fs::path(input).extension().string();
    if ((kind == ".pvtu" || kind == ".vtm") && readWholeFile(input, text)) {
        std::istringstream words(text);
        for (std::string word; std::getline(words, word, '"');)
            names.push_back(fs::path(word).filename().string());
    }
    const auto piece = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
        return isPieceName(result, name);
    });
    if (piece != names.end())
        throw UsageError(result + ": the output would replace '" + *piece +
                         "', which is a part of the input; give it another name");
}

void checkCollisions(const std::vector<std::string>& files, const AnalyzeOptions& options) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        refuseInput(files[i], options.input);
        if (!options.control.empty() && sameFile(files[i], options.control))
            throw UsageError(files[i] +
                             ": the output would replace the control file; give it another name");
        for (std::size_t j = 0; j < i; ++j)
            if (sameFile(files[i], files[j]))
                throw UsageError(files[i] +
                                 ": two outputs would have this name; give each its own");
    }
}

void checkWritable(const std::string& file) {
    std::error_code none;
    // On purpose: a pipe is opened once only, because its reader takes a close for the end.
    if (fs::is_fifo(file, none) || fs::is_character_file(file, none)) return;
    // Begins to write and gives up at once: the only test that also knows read-only disks.
    const AtomicFile probe(file);
}

}  // namespace

Outputs planOutputs(const AnalyzeOptions& options, const RunControl& control) {
    Outputs outputs;
    outputs.result = options.output;
    outputs.json = options.json;
    outputs.lines = options.lines;
    outputs.csv = options.csv;
    if (!options.lines.empty()) checkLinesName(options.lines);
    if (options.json == "-" && options.csv == "-")
        throw UsageError("--csv: standard output is taken by --json; give one of them a file");
    if (!options.output.empty()) {
        checkResultName(options.output);
        refuseStream(options.output);
        if (control.file.empty())
            outputs.control = fs::path(options.output).replace_extension(".cmp").string();
    }
    if (control.settings.debugOutput)
        outputs.trace = traceNameFor(control.file.empty() ? outputs.control : control.file);

    const std::vector<std::string> files = filesOf(outputs);
    checkCollisions(files, options);
    if (isInPieces(outputs.result)) refusePieces(outputs.result, options.input);
    if (!outputs.control.empty() && exists(outputs.control) && !isOwnControlFile(outputs.control))
        throw InputError(outputs.control +
                         ": this control file was not written by weldline and is not replaced; "
                         "use it with --control or give the result another name");
    for (const std::string& file : files) checkWritable(file);
    return outputs;
}

Outputs planOutputs(Ranks& ranks, const AnalyzeOptions& options, const RunControl& control) {
    Outputs outputs = together(
        ranks, [&] { return ranks.rank() == 0 ? planOutputs(options, control) : Outputs{}; });
    Packer packer;
    packer.put(outputs.result).put(outputs.json).put(outputs.control).put(outputs.trace);
    packer.put(outputs.lines).put(outputs.csv);
    const Bytes message = broadcast(ranks, packer.take());
    Unpacker unpacker(message);
    for (std::string* name : {&outputs.result, &outputs.json, &outputs.control, &outputs.trace,
                              &outputs.lines, &outputs.csv})
        unpacker.get(*name);
    return outputs;
}

bool isInPieces(const std::string& result) {
    return fs::path(result).extension() == ".pvtu";
}

void checkTarget(const std::string& file, const std::string& input) {
    refuseInput(file, input);
    checkWritable(file);
}

void checkJsonTarget(const std::string& json, const std::string& input) {
    if (!json.empty() && json != "-") checkTarget(json, input);
}

}  // namespace weldline
