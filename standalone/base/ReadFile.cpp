#include "ReadFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>

namespace weldline {

namespace {

bool readAll(int descriptor, std::string& bytes) {
    std::array<char, 16384> buffer{};
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count == 0) return true;
        if (count < 0 && errno != EINTR) return false;
        if (count > 0) bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

}  // namespace

bool readWholeFile(const std::string& file, std::string& bytes) {
    bytes.clear();
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return false;
    bool whole = false;
    try {
        whole = readAll(descriptor, bytes);
    } catch (...) {
        ::close(descriptor);
        throw;
    }
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return whole;
}

}  // namespace weldline
