#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace weldline {

// A result in pieces: NAME.pvtu, and beside it NAME_KEY_RANK.vtu for each rank. The key comes from
// what the pieces hold. So pieces of different results never share a name, a reader of the .pvtu
// file never meets a mixture of two, and the same run gives the same files.

std::uint64_t contentKey(std::string_view bytes);

// The key of a result, out of those of its pieces.
std::uint64_t keyOfAll(const std::vector<std::uint64_t>& pieces);

std::string pieceName(const std::string& result, std::uint64_t key, int rank);

// The .pvtu file.
std::string piecesText(const std::string& result, std::uint64_t key, int ranks);

// Whether a file name is that of a piece of the result, of any run.
bool isPieceName(const std::string& result, const std::string& fileName);

// Removes pieces of earlier results, and what killed runs left; nothing where another run is
// writing the same result or has replaced it already. Never fails.
void removeOlderPieces(const std::string& result, std::uint64_t key, int ranks);

}  // namespace weldline
