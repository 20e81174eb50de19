// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/JournalFormat.h"

#include <array>
#include <cstdint>

namespace jet {

// A journal as found beside a database, read one record at a time: its size costs no memory.
class JournalReader {
 public:
  enum class Kind {
    Unfinished,  // its writing was not finished, so the database is untouched
    Strange,     // nothing that a writer of this program leaves
    Sound,       // whole, with page 0 in it, each old page as its checksums say, and possible lengths
  };

  // Reads all of it. `file` must outlive this.
  explicit JournalReader(File& file);

  Kind What() const { return kind_; }
  // The rest holds for a sound one.
  std::uint64_t OldLength() const { return oldLength_; }
  // Bytes of the database in between: from OldLength to NewLength while the change was made.
  std::uint64_t NewLength() const { return newLength_; }

  std::size_t Count() const { return count_; }
  // One record, until the next is asked for.
  struct Record {
    std::uint32_t page = 0;
    ByteView image;  // the page before
    ByteView bytes;
    // Whether the sector of the page had this checksum before or after.
    bool KnowsSector(std::size_t sector, std::uint64_t sum) const;
  };
  Record Read(std::size_t i);

 private:
  Kind Judge();
  bool IsPossible(std::uint64_t size) const;
  bool FollowsItsSums(const Record& record) const;

  File& file_;
  std::uint64_t count_ = 0;
  std::uint64_t oldLength_ = 0;
  std::uint64_t newLength_ = 0;
  std::array<std::uint8_t, journal::kRecordBytes> buffer_{};
  Kind kind_;
};

}  // namespace jet
