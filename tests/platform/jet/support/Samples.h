// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Real files, written by the original programs.
namespace witness {

// Folder of the real sample files; nothing when the environment variable is not set.
std::optional<std::string> SampleFolder();
// The real sample files that this library reads.
std::vector<std::string> SampleNames();
std::string SamplePath(const std::string& name);
// The password of the sample; usually empty.
std::string SamplePassword(const std::string& name);
// The bytes of a real file.
jet::Bytes ContentOf(const std::filesystem::path& path);
std::unique_ptr<jet::Database> OpenSample(const std::string& name);

}  // namespace witness
