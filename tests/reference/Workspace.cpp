#include "Workspace.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <system_error>

namespace weldline::reference {

Workspace::Workspace() : former_(std::filesystem::current_path()) {
    std::string name = (std::filesystem::temp_directory_path() / "weldline-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for the cases could be made: " + name);
    }
    folder_ = name;
    std::filesystem::current_path(folder_);
}

Workspace::~Workspace() {
    std::error_code ignored;
    std::filesystem::current_path(former_, ignored);
    std::filesystem::remove_all(folder_, ignored);
}

CapturedOutput::CapturedOutput() {
    std::fflush(stdout);
    former_ = dup(STDOUT_FILENO);
    file_ = memfd_create("output", 0);
    // Appending, because partitions as processes share the file: without it two of them may write
    // to the same place.
    if (former_ < 0 || file_ < 0 || fcntl(file_, F_SETFL, O_APPEND) < 0 ||
        dup2(file_, STDOUT_FILENO) < 0) {
        throw std::runtime_error("standard output could not be captured");
    }
}

CapturedOutput::~CapturedOutput() {
    std::fflush(stdout);
    dup2(former_, STDOUT_FILENO);
    close(former_);
    close(file_);
}

double CapturedOutput::visibleBytes() {
    struct stat state {};
    fstat(STDOUT_FILENO, &state);
    return static_cast<double>(state.st_size);
}

std::string CapturedOutput::text() {
    std::fflush(stdout);
    std::string bytes(static_cast<std::size_t>(visibleBytes()), '\0');
    const ssize_t read = pread(file_, bytes.data(), bytes.size(), 0);
    bytes.resize(read < 0 ? 0 : static_cast<std::size_t>(read));
    return bytes;
}

std::string fileBytes(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        return "(no file)";
    }
    std::string bytes;
    char buffer[4096];
    while (const std::size_t n = std::fread(buffer, 1, sizeof buffer, file)) {
        bytes.append(buffer, n);
    }
    std::fclose(file);
    return bytes;
}

void writeFile(const std::string& path, const std::string& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        throw std::runtime_error("cannot write " + path);
    }
    const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file);
    if (std::fclose(file) != 0 || written != bytes.size()) {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace weldline::reference
