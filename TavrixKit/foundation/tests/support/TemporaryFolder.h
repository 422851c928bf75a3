#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace tavrix {

/// A new empty folder for one test. The destructor removes it with its content.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_(::testing::TempDir() + "tavrix-XXXXXX") {
    if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error{"mkdtemp"};
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return path_; }
  /// Returns the full path of an entry of the folder.
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  /// Writes a file and creates the folders above it.
  void write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories(std::filesystem::path{*this / name}.parent_path());
    std::ofstream file{*this / name, std::ios::binary};
    file << content;
    if (!file.flush()) throw std::runtime_error{"cannot write " + name};
  }
  /// Returns the bytes of a file. Throws if it does not exist.
  std::string read(const std::string& name) const {
    std::ifstream file{*this / name, std::ios::binary};
    if (!file) throw std::runtime_error{"cannot read " + name};
    return {std::istreambuf_iterator<char>{file}, {}};
  }
  /// Returns true if an entry has the name, even a dangling link.
  bool has(const std::string& name) const {
    return std::filesystem::symlink_status(*this / name).type() !=
           std::filesystem::file_type::not_found;
  }

 private:
  std::string path_;
};

}  // namespace tavrix
