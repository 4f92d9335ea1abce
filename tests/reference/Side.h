#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Case.h"
#include "Log.h"
#include "Player.h"

namespace weldline::reference {

// All that one side of a case produced.
struct Side {
    std::vector<Log> logs;  // per partition
    std::string output;     // standard output of all partitions
    std::vector<Outcome> outcomes;
};

// What runs the partitions of a case side by side.
enum class Partitions { asThreads, asProcesses };

// Plays a case with the library's record, the library's public class, or the reference. The names
// of the files are equally long on both sides.
Side playLibrary(const Case& randomCase, Partitions partitions);
Side playReference(const Case& randomCase);

// The first difference in words, or nothing.
std::optional<std::string> difference(const Side& library, const Side& reference);

}  // namespace weldline::reference
