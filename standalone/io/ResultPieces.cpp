#include "ResultPieces.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/ReadFile.h"
#include "base/TemporaryName.h"

namespace weldline {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t keyLength = 16;
constexpr std::uint64_t start = 0xcbf29ce484222325ULL;

// One step of the FNV-1a hash, by 64 bits instead of 8.
std::uint64_t mix(std::uint64_t key, std::uint64_t value) {
    return (key ^ value) * 0x100000001b3ULL;
}

std::string stemOf(const std::string& result) {
    return fs::path(result).stem().string() + "_";
}

std::string hexadecimal(std::uint64_t key) {
    std::array<char, keyLength + 1> text{};
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(key));
    return text.data();
}

std::string pieceFile(const std::string& result, std::uint64_t key, int rank) {
    return stemOf(result) + hexadecimal(key) + "_" + std::to_string(rank) + ".vtu";
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

bool areAll(std::string_view text, std::string_view allowed) {
    return !text.empty() && text.find_first_not_of(allowed) == std::string_view::npos;
}

}  // namespace

std::uint64_t contentKey(std::string_view bytes) {
    std::uint64_t key = mix(start, bytes.size());
    std::size_t at = 0;
    for (; at + sizeof key <= bytes.size(); at += sizeof key) {
        std::uint64_t word = 0;
        std::copy_n(bytes.data() + at, sizeof word, reinterpret_cast<char*>(&word));
        // The product moves bits upwards only.
        key = mix(key, word);
        key ^= key >> 32U;
    }
    for (; at < bytes.size(); ++at) {
        key = mix(key, static_cast<unsigned char>(bytes[at]));
    }
    return key;
}

std::uint64_t keyOfAll(const std::vector<std::uint64_t>& pieces) {
    std::uint64_t key = mix(start, pieces.size());
    for (const std::uint64_t piece : pieces) {
        key = mix(key, piece);
        key ^= key >> 32U;
    }
    return key;
}

std::string pieceName(const std::string& result, std::uint64_t key, int rank) {
    return (fs::path(result).parent_path() / pieceFile(result, key, rank)).string();
}

std::string piecesText(const std::string& result, std::uint64_t key, int ranks) {
    std::string text =
        "<?xml version=\"1.0\"?>\n"
        "<VTKFile type=\"PUnstructuredGrid\" version=\"1.0\" byte_order=\"LittleEndian\" "
        "header_type=\"UInt64\">\n"
        "  <PUnstructuredGrid GhostLevel=\"0\">\n"
        "    <PPointData>\n"
        "      <PDataArray type=\"Float64\" Name=\"MeetingAngle\"/>\n"
        "      <PDataArray type=\"Int32\" Name=\"WeldLine\"/>\n"
        "    </PPointData>\n"
        "    <PCellData>\n"
        "      <PDataArray type=\"Float32\" Name=\"FillTime\"/>\n"
        "      <PDataArray type=\"Float32\" Name=\"FlowDirection\" NumberOfComponents=\"3\"/>\n"
        "    </PCellData>\n"
        "    <PPoints>\n"
        "      <PDataArray type=\"Float64\" Name=\"Points\" NumberOfComponents=\"3\"/>\n"
        "    </PPoints>\n";
    for (int rank = 0; rank < ranks; ++rank) {
        text += "    <Piece Source=\"" + escaped(pieceFile(result, key, rank)) + "\"/>\n";
    }
    return text + "  </PUnstructuredGrid>\n</VTKFile>\n";
}

bool isPieceName(const std::string& result, const std::string& fileName) {
    const std::string stem = stemOf(result);
    constexpr std::string_view ending = ".vtu";
    std::string_view rest = fileName;
    if (!rest.starts_with(stem) || !rest.ends_with(ending)) {
        return false;
    }
    rest.remove_prefix(stem.size());
    rest.remove_suffix(ending.size());
    return rest.size() > keyLength + 1 && rest[keyLength] == '_' &&
           areAll(rest.substr(0, keyLength), "0123456789abcdef") &&
           areAll(rest.substr(keyLength + 1), "0123456789");
}

// On purpose the folder is read first: pieces that another run puts there later are not touched,
// and of those before it either its temporary or its result shows.
void removeOlderPieces(const std::string& result, std::uint64_t key, int ranks) {
    const fs::path folder =
        fs::path(result).has_parent_path() ? fs::path(result).parent_path() : ".";
    const std::string own = stemOf(result) + hexadecimal(key) + "_";
    std::vector<fs::path> older;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const std::string target = targetOfTemporary(name);
        if (isPieceName(result, name) && !name.starts_with(own)) {
            older.push_back(entry->path());
        } else if (!target.empty() && isPieceName(result, target)) {
            removeLeftTemporaries(folder / target);
        }
    }
    std::string text;
    if (isBeingWritten(result) || !readWholeFile(result, text) ||
        text != piecesText(result, key, ranks)) {
        return;
    }
    for (const fs::path& piece : older) {
        fs::remove(piece, error);
    }
}

}  // namespace weldline
