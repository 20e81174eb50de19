// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace jet {

// A user who has the database open, as recorded in its .ldb file.
struct LockFileUser {
  std::string machine;
  std::string name;
};

// The .ldb file next to a database, through which Jet programs and this library see each other. Our entry and user byte
// exist during the lifetime of this object. It is shared by all databases with that name and any extension, and remains
// when the database file is replaced.
//
// Entry i (from 1) is at offset (i-1)*64: 32 bytes machine, 32 bytes user, 8-bit, ended by 00. Its user holds a lock on
// byte 0x10000000 + i; this library also one on byte 0x80001000 + i. Only the locks count; old entries remain in the
// file.
class LockFile {
 public:
  static constexpr unsigned kMaxUsers = 255;

  // `path`: the database's real path. `database`: its file, whose permissions a new .ldb gets; it must outlive this. A
  // .ldb that cannot be used is reported by Require only.
  LockFile(FileSystem& files, const std::filesystem::path& path, File& database);
  // Releases our entry, and removes the file when it has no other user.
  ~LockFile();
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;

  // The path of the .ldb of a database.
  static std::filesystem::path Of(const std::filesystem::path& database);
  // Throws Error (Unsupported) for a database whose own extension is .ldb.
  static void CheckName(const std::filesystem::path& database);

  // Opens the .ldb when the constructor could not. Throws Error with its name when that fails again: a writer without
  // the .ldb would not see other Jet programs, nor they the writer.
  void Require();
  // Our number, 1 to 255; 0 when we have none.
  unsigned Number() const { return number_; }
  // The entry of user `number`.
  LockFileUser UserAt(unsigned number);
  // The number of a user of another Jet program; nothing when there is none.
  std::optional<unsigned> ForeignUser();

 private:
  bool Enter();
  std::unique_ptr<File> OpenOrCreate();
  bool TakeNumber(File& file);
  void WriteEntry(File& file) const;

  FileSystem& files_;
  std::filesystem::path path_;
  File& database_;
  std::unique_ptr<File> file_;
  unsigned number_ = 0;
};

// This machine's name and the name of the user who runs the program, for the .ldb entry.
LockFileUser ThisUser();
// "NAME op MACHINE", or what is known of it; empty when nothing is.
std::string Described(const LockFileUser& user);

}  // namespace jet
