#include "Target.h"

#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace weldline::fuzz {

namespace {

namespace fs = std::filesystem;

struct Folder {
    Folder() : name((fs::temp_directory_path() / "fuzz-XXXXXX").string()) {
        if (::mkdtemp(name.data()) == nullptr) fail("no temporary folder");
    }
    ~Folder() {
        std::error_code none;
        fs::remove_all(name, none);
    }
    std::string name;
};

}  // namespace

void fail(const std::string& what) {
    std::fprintf(stderr, "a promise does not hold: %s\n", what.c_str());
    std::abort();
}

const std::string& scratchFolder() {
    static const Folder folder;
    return folder.name;
}

void writeBytes(const std::string& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
    if (!stream) fail("cannot write " + file);
}

}  // namespace weldline::fuzz
