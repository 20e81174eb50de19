// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/PowerCut.h"

#include <algorithm>
#include <memory>

namespace jet::test {
namespace {

using Change = FaultyFiles::Change;
using Path = FileSystem::Path;

constexpr std::size_t kSector = 512;

// A file on the disk: its durable content and the pending changes.
struct DiskFile {
  Bytes safe;
  std::vector<Change> pending;
};

using Names = std::map<Path, std::shared_ptr<DiskFile>>;

void WriteInto(Bytes& content, std::uint64_t offset, ByteView bytes) {
  if (content.size() < offset + bytes.size()) content.resize(offset + bytes.size());
  std::copy(bytes.begin(), bytes.end(), content.begin() + static_cast<std::ptrdiff_t>(offset));
}

void ApplyWhole(Bytes& content, const Change& change) {
  if (change.kind == Change::Truncate) {
    content.resize(change.offset);
  } else {
    WriteInto(content, change.offset, change.bytes);
  }
}

// Applies each sector of the write with a probability of one half.
void ApplyTorn(Bytes& content, const Change& change, std::mt19937& random) {
  if (change.kind == Change::Truncate) {
    if (random() % 2 == 0) content.resize(change.offset);
    return;
  }
  for (std::size_t at = 0; at < change.bytes.size();) {
    const std::size_t length = std::min(kSector - (change.offset + at) % kSector, change.bytes.size() - at);
    if (random() % 2 == 0) WriteInto(content, change.offset + at, ByteView(change.bytes).subspan(at, length));
    at += length;
  }
}

class Disk {
 public:
  explicit Disk(const std::map<Path, Bytes>& before) {
    for (const auto& [path, content] : before)
      current_[path] = std::make_shared<DiskFile>(DiskFile{content, {}});
    safe_ = current_;
  }

  void Do(const Change& change) {
    switch (change.kind) {
      case Change::Write:
      case Change::Truncate:
        return current_.at(change.path)->pending.push_back(change);
      case Change::Sync: {
        DiskFile& file = *current_.at(change.path);
        for (const Change& pending : file.pending)
          ApplyWhole(file.safe, pending);
        return file.pending.clear();
      }
      case Change::SyncFolder:
        safe_ = current_;
        return pendingNames_.clear();
      case Change::Create:
      case Change::Remove:
      case Change::Rename:
        pendingNames_.push_back({change, change.kind == Change::Create ? std::make_shared<DiskFile>() : nullptr});
        return ApplyName(current_, pendingNames_.back());
    }
  }

  void Cut(std::mt19937& random, files::MemoryFileSystem& disk) {
    for (const NameChange& change : pendingNames_) {
      if (random() % 2 == 0) ApplyName(safe_, change);
    }
    for (const auto& [path, file] : safe_) {
      Bytes content = file->safe;
      const bool careful = random() % 4 == 0;  // some disks write in order
      for (const Change& pending : file->pending) {
        if (careful && random() % 4 == 0) break;
        careful ? ApplyWhole(content, pending) : ApplyTorn(content, pending, random);
      }
      disk.Put(path, content);
    }
  }

 private:
  struct NameChange {
    Change change;
    std::shared_ptr<DiskFile> made;
  };

  static void ApplyName(Names& names, const NameChange& change) {
    const Change& what = change.change;
    if (what.kind == Change::Create) names[what.path] = change.made;
    if (what.kind == Change::Remove) names.erase(what.path);
    if (what.kind == Change::Rename && names.count(what.path) != 0) {
      names[what.other] = names[what.path];
      names.erase(what.path);
    }
  }

  Names current_;
  Names safe_;
  std::vector<NameChange> pendingNames_;
};

}  // namespace

void ReplayUntil(const std::vector<Change>& changes, std::size_t cut, const std::map<Path, Bytes>& before,
                 std::mt19937& random, files::MemoryFileSystem& disk) {
  Disk state(before);
  for (std::size_t i = 0; i < cut; ++i)
    state.Do(changes[i]);
  state.Cut(random, disk);
}

}  // namespace jet::test
