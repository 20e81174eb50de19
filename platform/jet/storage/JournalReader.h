// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/JournalFormat.h"

#include <array>
#include <cstdint>

namespace jet {

// Reads a journal one record at a time, so that its size costs no memory.
class JournalReader {
 public:
  enum class Kind {
    Unfinished,  // not written completely, so the database is untouched
    Foreign,     // not written by this library
    Sound,       // complete, with page 0, matching checksums and possible lengths
  };

  // Reads and checks the complete file, which must outlive this.
  explicit JournalReader(File& file);

  Kind GetKind() const { return kind_; }
  // The methods below are valid for Kind::Sound only.
  std::uint64_t OldLength() const { return oldLength_; }
  // During the change the database's length is between OldLength and NewLength.
  std::uint64_t NewLength() const { return newLength_; }

  std::size_t Count() const { return count_; }
  // One record; valid until the next Read.
  struct Record {
    std::uint32_t page = 0;
    ByteView image;  // the page before
    ByteView bytes;
    // Whether the sector of the page had this checksum before or after the change.
    bool KnowsSector(std::size_t sector, std::uint64_t sum) const;
  };
  Record Read(std::size_t i);

 private:
  Kind Classify();
  bool IsPossible(std::uint64_t size) const;
  bool MatchesItsSums(const Record& record) const;

  File& file_;
  std::uint64_t count_ = 0;
  std::uint64_t oldLength_ = 0;
  std::uint64_t newLength_ = 0;
  std::array<std::uint8_t, journal::kRecordBytes> buffer_{};
  Kind kind_;
};

}  // namespace jet
