#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace weldline::test {

// A file of this process alone, ".cmp", with the given text; removed in the end.
class PrivateFile {
  public:
    explicit PrivateFile(const std::string& text) {
        m_path = (std::filesystem::temp_directory_path() / "weldline-test-XXXXXX.cmp").string();
        const int file = ::mkstemps(m_path.data(), 4);
        if (file >= 0) ::close(file);
        std::ofstream(m_path) << text;
    }
    ~PrivateFile() { std::remove(m_path.c_str()); }
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    const std::string& path() const { return m_path; }

  private:
    std::string m_path;
};

}  // namespace weldline::test
