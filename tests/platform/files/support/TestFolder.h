// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace files::test {

// A temporary folder on the disk for one test. Its path contains no links.
class TestFolder : public testing::Test {
 protected:
  TestFolder() {
    std::string pattern =
        (std::filesystem::canonical(std::filesystem::temp_directory_path()) / "files-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error(pattern);
    folder_ = pattern;
  }
  ~TestFolder() override { std::filesystem::remove_all(folder_); }

  std::filesystem::path At(const std::string& name) const { return folder_ / name; }

  void Put(const std::string& name, const std::string& content) const {
    std::ofstream(At(name), std::ios::binary) << content;
  }
  std::string Get(const std::string& name) const {
    std::ifstream file(At(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  // The number of entries, including hidden ones.
  std::ptrdiff_t Count() const {
    return std::distance(std::filesystem::directory_iterator(folder_), std::filesystem::directory_iterator());
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace files::test
