#include "tests/platform/files/support/FaultyFiles.h"

#include <cerrno>

namespace files::test {
namespace {

class FaultyFile final : public File {
 public:
  FaultyFile(FaultyFiles& owner, std::unique_ptr<File> real, FileSystem::Path path)
      : File(real->Name()), owner_(owner), real_(std::move(real)), path_(std::move(path)) {}

  std::int64_t RawRead(std::uint64_t offset, ByteSpan into) override {
    bool shortened = false;
    if (const int error = owner_.Next(true, &shortened)) return error;
    return real_->RawRead(offset, shortened ? into.first((into.size() + 1) / 2) : into);
  }

  std::int64_t RawWrite(std::uint64_t offset, ByteView bytes) override {
    bool shortened = false;
    if (const int error = owner_.Next(true, &shortened)) return error;
    if (shortened) bytes = bytes.first((bytes.size() + 1) / 2);
    owner_.Note({FaultyFiles::Change::Write, path_, offset, Bytes(bytes.begin(), bytes.end()), {}});
    return real_->RawWrite(offset, bytes);
  }

  std::int64_t RawSize() override {
    const int error = owner_.Next();
    return error != 0 ? error : real_->RawSize();
  }
  int RawTruncate(std::uint64_t size) override {
    if (const int error = owner_.Next()) return error;
    owner_.Note({FaultyFiles::Change::Truncate, path_, size, {}, {}});
    return real_->RawTruncate(size);
  }
  int RawSync() override {
    if (const int error = owner_.Next()) return error;
    owner_.Note({FaultyFiles::Change::Sync, path_, 0, {}, {}});
    return real_->RawSync();
  }
  int RawLock(ByteRange range, LockKind kind) override {
    const int error = owner_.Next();
    return error != 0 ? error : real_->RawLock(range, kind);
  }
  int RawUnlock(ByteRange range) override {
    const int error = owner_.Next();
    return error != 0 ? error : real_->RawUnlock(range);
  }
  int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) override {
    const int error = owner_.Next();
    return error != 0 ? error : real_->RawFindLock(range, kind, found, where);
  }
  int RawIdentity(FileIdentity* identity) override {
    const int error = owner_.Next();
    return error != 0 ? error : real_->RawIdentity(identity);
  }

 private:
  FaultyFiles& owner_;
  std::unique_ptr<File> real_;
  FileSystem::Path path_;
};

}  // namespace

void FaultyFiles::FailAt(int call, Fault fault) {
  calls_ = 0;
  failing_ = call;
  fault_ = fault;
  failed_ = false;
}

int FaultyFiles::Next(bool counts, bool* shortened) {
  const int call = calls_++;
  if (fault_ == Fault::None || call < failing_ || (call > failing_ && fault_ != Fault::Dead)) return 0;
  failed_ = true;
  switch (fault_) {
    case Fault::Error:
    case Fault::Dead:
      return -EIO;
    case Fault::DiskFull:
      return -ENOSPC;
    case Fault::Interrupted:
      return -EINTR;
    case Fault::ShortCount:
      if (counts) *shortened = true;
      return 0;
    case Fault::None:
      break;
  }
  return 0;
}

void FaultyFiles::Note(Change change) {
  if (changes_ != nullptr) changes_->push_back(std::move(change));
}

int FaultyFiles::RawOpen(const Path& path, OpenMode mode, std::unique_ptr<File>* file) {
  if (const int error = Next()) return error;
  FileIdentity identity;
  const bool isNew = real_.RawIdentity(path, &identity) != 0;
  std::unique_ptr<File> opened;
  const int result = real_.RawOpen(path, mode, &opened);
  if (result < 0) return result;
  if (isNew) Note({Change::Create, path, 0, {}, {}});
  *file = std::make_unique<FaultyFile>(*this, std::move(opened), path);
  return 0;
}

int FaultyFiles::RawIdentity(const Path& path, FileIdentity* identity) {
  const int error = Next();
  return error != 0 ? error : real_.RawIdentity(path, identity);
}

int FaultyFiles::RawRename(const Path& from, const Path& to) {
  if (const int error = Next()) return error;
  Note({Change::Rename, from, 0, {}, to});
  return real_.RawRename(from, to);
}

int FaultyFiles::RawRemove(const Path& path) {
  if (const int error = Next()) return error;
  Note({Change::Remove, path, 0, {}, {}});
  return real_.RawRemove(path);
}

int FaultyFiles::RawSyncFolder(const Path& folder) {
  if (const int error = Next()) return error;
  Note({Change::SyncFolder, folder, 0, {}, {}});
  return real_.RawSyncFolder(folder);
}

int FaultyFiles::RawCopyPermissions(const Path& model, const Path& path) {
  const int error = Next();
  return error != 0 ? error : real_.RawCopyPermissions(model, path);
}

}  // namespace files::test
