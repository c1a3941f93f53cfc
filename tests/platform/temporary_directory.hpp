// A directory for one test, removed with all its files at the end.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tessarel::test {

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tessarel_XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    path_ = pattern + "/";
  }
  ~TemporaryDirectory() { std::filesystem::remove_all(path_); }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  /// With a separator at the end.
  [[nodiscard]] const std::string& path() const { return path_; }

  std::string write(const std::string& name, std::string_view content) const {
    std::ofstream(path_ + name, std::ios::binary) << content;
    return path_ + name;
  }

 private:
  std::string path_;
};

}  // namespace tessarel::test
