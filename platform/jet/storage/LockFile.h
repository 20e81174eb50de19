// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace jet {

// Who has a database open, as written in its .ldb file.
struct LockFileUser {
  std::string machine;
  std::string name;
};

// The .ldb file beside a database, through which Jet programs and we see each other. As long as this lives, our entry
// and user byte are there. It is shared by all databases of that name, whatever their ending, and stays the same when
// another file is put in place of the database.
//
// Entry i (from 1) lies at (i-1)*64: 32 bytes machine, 32 bytes user, 8-bit, ended by 00. Its user holds a lock on
// byte 0x10000000 + i; a program of ours also one on byte 0x80001000 + i. Only the locks prove anything; entries stay
// behind.
class LockFile {
 public:
  static constexpr unsigned kMostUsers = 255;

  // `path` is the database's real path, `database` its file, whose access rights a new .ldb gets; it must outlive
  // this. A .ldb that cannot be used is no error yet: see Require.
  LockFile(FileSystem& files, const std::filesystem::path& path, File& database);
  // Gives up our entry, and removes the file when nobody else is in it.
  ~LockFile();
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;

  // The path of the .ldb of a database.
  static std::filesystem::path Of(const std::filesystem::path& database);
  // An Error for a database whose own name is that of a .ldb.
  static void CheckName(const std::filesystem::path& database);

  // Tries once more when the .ldb could not be used. An Error, naming it, when it still cannot: then programs of
  // another make would not see us, nor we them.
  void Require();
  // Our number, 1 to 255; 0 when we have none.
  unsigned Number() const { return number_; }
  // The entry of user `number`.
  LockFileUser UserAt(unsigned number);
  // The number of a user that is no program of ours; nothing when there is none.
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
