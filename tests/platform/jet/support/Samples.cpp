// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/Samples.h"

#include <cstdlib>

namespace witness {

std::optional<std::string> SampleFolder() {
  const char* folder = std::getenv("SPOTROOSTER_MDB_SAMPLES");
  return folder != nullptr && *folder != '\0' ? std::optional<std::string>(folder) : std::nullopt;
}

std::vector<std::string> SampleNames() {
  return {"access2000_empty", "adox_empty",  "alltypes_big", "composite_index", "deleted_rows",
          "encoded",          "index_flags", "many_columns", "northwind",       "numeric",
          "overflow_rows",    "password",    "relations",    "unicode_text"};
}

std::string SamplePath(const std::string& name) {
  return *SampleFolder() + "/" + name + ".mdb";
}

std::string SamplePassword(const std::string& name) {
  return name == "password" ? name : std::string();
}

jet::Bytes ContentOf(const std::filesystem::path& path) {
  const auto file = jet::HostFileSystem().Open(path, jet::OpenMode::Read);
  jet::Bytes content(file->Size());
  file->ReadAt(0, content);
  return content;
}

std::unique_ptr<jet::Database> OpenSample(const std::string& name) {
  const std::string password = SamplePassword(name);
  jet::OpenOptions options;
  options.password = std::u16string(password.begin(), password.end());
  return jet::Database::Open(SamplePath(name), options);
}

}  // namespace witness
