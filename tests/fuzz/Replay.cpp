// Stands in for a fuzzing engine where there is none: calls a target with every file of the
// folders and files named, in the order of their names.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Target.h"

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    std::vector<fs::path> files;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) files.emplace_back(argv[i]);
        for (const auto& entry :
             fs::is_directory(argv[i]) ? fs::directory_iterator(argv[i]) : fs::directory_iterator())
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        // Before the call, so that the last name is that of a crash.
        std::fprintf(stderr, "%s\n", file.c_str());
        std::ifstream stream(file, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}
