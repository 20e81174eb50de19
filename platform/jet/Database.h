#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/Catalog.h"
#include "platform/jet/FileSystem.h"
#include "platform/jet/Pages.h"
#include "platform/jet/Table.h"

namespace jet {

struct OpenOptions {
  std::u16string password;         ///< for a file that asks for one
  std::size_t cachedPages = 2048;  ///< most pages kept in memory, 4096 bytes each
};

/// One open Jet 4 database file. Not thread-safe. Errors name the file.
class Database {
 public:
  /// Opens an existing file for reading. Refuses with one clear sentence what is no Jet 4 file, and a file whose
  /// password was not given.
  static std::unique_ptr<Database> Open(const std::filesystem::path& path, const OpenOptions& options = {},
                                        FileSystem& files = HostFileSystem());
  /// Opens a file that is at hand already.
  static std::unique_ptr<Database> Open(std::unique_ptr<File> file, const OpenOptions& options = {});

  const std::string& Name() const { return file_->Name(); }
  const Header& DatabaseHeader() const { return pages_.DatabaseHeader(); }
  const Catalog& Objects();
  PageSource& Source() { return pages_; }
  File& UnderlyingFile() { return *file_; }

  /// The tables made by users, in the order of their names; system and hidden tables are left out.
  std::vector<std::u16string> TableNames();
  bool HasTable(std::u16string_view name);
  /// Any table by name (system tables too), in any case. An Error when there is none or its definition is damaged.
  Table OpenTable(std::u16string_view name);

 private:
  Database(std::unique_ptr<File> file, const OpenOptions& options);
  std::string Context() const;

  std::unique_ptr<File> file_;
  Pages pages_;
  std::optional<Catalog> catalog_;
};

}  // namespace jet
