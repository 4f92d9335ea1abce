#include "ReadChoice.h"

#include <charconv>
#include <string>

#include "base/Errors.h"

namespace weldline::performance {

MeshChoice readChoice(int count, char** words) {
    MeshChoice choice;
    for (int i = 0; i < count; ++i) {
        const std::string word = words[i];
        const char* end = word.data() + word.size();
        if (word == "shuffled") {
            choice.shuffled = true;
        } else if (word == "hexahedra" || word == "tetrahedra") {
            choice.shape = word == "hexahedra" ? Shape::Hexahedra : Shape::Tetrahedra;
        } else if (const auto read = std::from_chars(word.data(), end, choice.edge);
                   read.ec != std::errc() || read.ptr != end || choice.edge < 2 ||
                   choice.edge > 400) {
            throw UsageError("'" + word + "' is neither a shape nor an edge from 2 to 400");
        }
    }
    return choice;
}

}  // namespace weldline::performance
