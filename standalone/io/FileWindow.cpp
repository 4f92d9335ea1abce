#include "FileWindow.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "OpenDataSet.h"

namespace weldline {

FileWindow::FileWindow(const std::string& file, std::size_t growth)
    : file_(file), descriptor_(::open(file.c_str(), O_RDONLY | O_CLOEXEC)), growth_(growth) {
    struct stat state {};
    const bool isOpen = descriptor_ >= 0 && ::fstat(descriptor_, &state) == 0;
    // Places in the file are gone back to, which a pipe does not allow.
    if (!isOpen || !S_ISREG(state.st_mode)) {
        if (descriptor_ >= 0) ::close(descriptor_);
        failOnInput(file, isOpen ? "it is no regular file" : "the file cannot be read");
    }
    size_ = static_cast<std::uint64_t>(state.st_size);
    changed_ = state.st_mtim;
}

FileWindow::~FileWindow() {
    ::close(descriptor_);
}

bool FileWindow::extend() {
    bytes_.erase(0, passed_);
    start_ += passed_;
    passed_ = 0;
    const std::size_t known = bytes_.size();
    bytes_.resize(known + growth_);
    ssize_t count = 0;
    do {
        count = ::pread(descriptor_, bytes_.data() + known, growth_,
                        static_cast<off_t>(start_ + known));
    } while (count < 0 && errno == EINTR);
    bytes_.resize(known + static_cast<std::size_t>(count < 0 ? 0 : count));
    if (count < 0) failOnInput(file_, "the file cannot be read");
    return count > 0;
}

void FileWindow::goTo(std::uint64_t at) {
    bytes_.clear();
    start_ = at;
    passed_ = 0;
}

bool FileWindow::isChanged() const {
    struct stat state {};
    return ::fstat(descriptor_, &state) != 0 ||
           static_cast<std::uint64_t>(state.st_size) != size_ ||
           state.st_mtim.tv_sec != changed_.tv_sec || state.st_mtim.tv_nsec != changed_.tv_nsec;
}

}  // namespace weldline
