#include "bench/TimedFiles.h"

#include <chrono>
#include <memory>

namespace bench {

TimedFiles::Spent& TimedFiles::Spent::operator+=(const Spent& more) {
  calls += more.calls;
  syncs += more.syncs;
  writes += more.writes;
  bytesWritten += more.bytesWritten;
  waitedMilliseconds += more.waitedMilliseconds;
  return *this;
}

class TimedFiles::CountedFile final : public jet::File {
 public:
  CountedFile(TimedFiles& owner, std::unique_ptr<jet::File> real)
      : File(real->Name()), owner_(owner), real_(std::move(real)) {}

  std::int64_t RawRead(std::uint64_t offset, jet::ByteSpan into) override { return Counted().RawRead(offset, into); }
  std::int64_t RawWrite(std::uint64_t offset, jet::ByteView bytes) override {
    ++owner_.spent_.writes;
    owner_.spent_.bytesWritten += static_cast<double>(bytes.size());
    return Counted().RawWrite(offset, bytes);
  }
  std::int64_t RawSize() override { return Counted().RawSize(); }
  int RawTruncate(std::uint64_t size) override { return Counted().RawTruncate(size); }
  int RawSync() override {
    ++owner_.spent_.syncs;
    return owner_.Waiting([this] { return real_->RawSync(); });
  }
  int RawLock(jet::ByteRange range, jet::LockKind kind) override { return Counted().RawLock(range, kind); }
  int RawUnlock(jet::ByteRange range) override { return Counted().RawUnlock(range); }
  int RawFindLock(jet::ByteRange range, jet::LockKind kind, bool* found, std::uint64_t* where) override {
    return Counted().RawFindLock(range, kind, found, where);
  }
  int RawIdentity(jet::FileIdentity* identity) override { return Counted().RawIdentity(identity); }

 private:
  jet::File& Counted() {
    ++owner_.spent_.calls;
    return *real_;
  }

  TimedFiles& owner_;
  std::unique_ptr<jet::File> real_;
};

jet::FileSystem& TimedFiles::Counted() {
  ++spent_.calls;
  return jet::HostFileSystem();
}

int TimedFiles::Waiting(const std::function<int()>& call) {
  ++spent_.calls;
  const auto begin = std::chrono::steady_clock::now();
  const int answer = call();
  const std::chrono::duration<double, std::milli> waited = std::chrono::steady_clock::now() - begin;
  spent_.waitedMilliseconds += waited.count();
  return answer;
}

int TimedFiles::RawOpen(const Path& path, jet::OpenMode mode, std::unique_ptr<jet::File>* file) {
  std::unique_ptr<jet::File> real;
  const int answer = Counted().RawOpen(path, mode, &real);
  if (answer == 0) *file = std::make_unique<CountedFile>(*this, std::move(real));
  return answer;
}

int TimedFiles::RawIdentity(const Path& path, jet::FileIdentity* identity) {
  return Counted().RawIdentity(path, identity);
}

int TimedFiles::RawRename(const Path& from, const Path& to) {
  return Counted().RawRename(from, to);
}

int TimedFiles::RawRemove(const Path& path) {
  return Waiting([&] { return jet::HostFileSystem().RawRemove(path); });
}

int TimedFiles::RawSyncFolder(const Path& folder) {
  ++spent_.syncs;
  return Waiting([&] { return jet::HostFileSystem().RawSyncFolder(folder); });
}

int TimedFiles::RawCopyPermissions(const Path& model, const Path& path) {
  return Counted().RawCopyPermissions(model, path);
}

}  // namespace bench
