#include "tests/support/FlakyDrive.h"

#include <QFile>
#include <QStringList>

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <mutex>
#include <random>
#include <string>
#include <thread>

namespace testing_support {

// How the drive is at present, and for how many calls yet. Once gone it stays so until it is held.
struct FlakyDrive::Weather {
  enum Kind { Well, Slow, Failing, Gone };

  Weather(QStringList roots, unsigned seed) : folders(std::move(roots)), random(seed) {}

  // The errno with which a call on the path ends, or 0 after a while.
  int Next(const QString& hostPath) {
    bool slow = false;
    {
      const std::lock_guard lock(mutex);
      if (held || !IsOn(hostPath)) return 0;
      if (kind != Gone && left-- <= 0) Turn();
      if (kind == Well) return 0;
      ++hindered;
      if (kind != Slow) return kind == Gone ? ENOENT : EIO;
      slow = true;
    }
    if (slow) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 0;
  }

  bool IsOn(const QString& hostPath) const {
    for (const QString& folder : folders) {
      if (hostPath == folder || hostPath.startsWith(folder + u'/')) return true;
    }
    return false;
  }

  void Turn() {
    kind = random() % 3 != 0 ? Well : static_cast<Kind>(1 + random() % 3);
    left = static_cast<int>(random() % (kind == Well ? 400 : 12));
  }

  QStringList folders;
  std::mt19937 random;
  std::mutex mutex;
  Kind kind = Well;
  int left = 0;
  int hindered = 0;
  bool held = false;
};

namespace {

using Weather = FlakyDrive::Weather;

// A drive that is gone answers a program that has a file open there with an error, not with "no such file".
int Failure(Weather& weather, const std::string& path) {
  return weather.Next(QFile::decodeName(QByteArray::fromStdString(path))) != 0 ? -EIO : 0;
}

class FlakyFile final : public jet::File {
 public:
  FlakyFile(std::shared_ptr<Weather> weather, std::unique_ptr<jet::File> real)
      : File(real->Name()), weather_(std::move(weather)), real_(std::move(real)) {}

  std::int64_t RawRead(std::uint64_t offset, jet::ByteSpan into) override {
    const int failure = Next();
    return failure != 0 ? failure : real_->RawRead(offset, into);
  }
  std::int64_t RawWrite(std::uint64_t offset, jet::ByteView bytes) override {
    const int failure = Next();
    return failure != 0 ? failure : real_->RawWrite(offset, bytes);
  }
  std::int64_t RawSize() override {
    const int failure = Next();
    return failure != 0 ? failure : real_->RawSize();
  }
  int RawTruncate(std::uint64_t size) override {
    return Or(Next(), [&] { return real_->RawTruncate(size); });
  }
  int RawSync() override {
    return Or(Next(), [&] { return real_->RawSync(); });
  }
  int RawLock(jet::ByteRange range, jet::LockKind kind) override {
    return Or(Next(), [&] { return real_->RawLock(range, kind); });
  }
  // Always done: a server lets go of what belongs to a client that is away.
  int RawUnlock(jet::ByteRange range) override { return real_->RawUnlock(range); }
  int RawFindLock(jet::ByteRange range, jet::LockKind kind, bool* found, std::uint64_t* where) override {
    return Or(Next(), [&] { return real_->RawFindLock(range, kind, found, where); });
  }
  int RawIdentity(jet::FileIdentity* identity) override {
    return Or(Next(), [&] { return real_->RawIdentity(identity); });
  }

 private:
  int Next() { return Failure(*weather_, Name()); }
  template <class Call>
  static int Or(int failure, const Call& call) {
    return failure != 0 ? failure : call();
  }

  std::shared_ptr<Weather> weather_;
  std::unique_ptr<jet::File> real_;
};

class FlakyFiles final : public jet::FileSystem {
 public:
  explicit FlakyFiles(std::shared_ptr<Weather> weather) : weather_(std::move(weather)) {}

  int RawOpen(const Path& path, jet::OpenMode mode, std::unique_ptr<jet::File>* file) override {
    if (const int failure = Next(path)) return failure;
    std::unique_ptr<jet::File> real;
    if (const int failure = real_.RawOpen(path, mode, &real)) return failure;
    *file = std::make_unique<FlakyFile>(weather_, std::move(real));
    return 0;
  }
  int RawIdentity(const Path& path, jet::FileIdentity* identity) override {
    const int failure = Next(path);
    return failure != 0 ? failure : real_.RawIdentity(path, identity);
  }
  int RawRename(const Path& from, const Path& to) override {
    const int failure = Next(from);
    return failure != 0 ? failure : real_.RawRename(from, to);
  }
  int RawRemove(const Path& path) override {
    const int failure = Next(path);
    return failure != 0 ? failure : real_.RawRemove(path);
  }
  int RawSyncFolder(const Path& folder) override {
    const int failure = Next(folder);
    return failure != 0 ? failure : real_.RawSyncFolder(folder);
  }
  int RawCopyPermissions(const Path& model, const Path& path) override { return real_.RawCopyPermissions(model, path); }

 private:
  int Next(const Path& path) { return Failure(*weather_, path.string()); }

  std::shared_ptr<Weather> weather_;
  jet::FileSystem& real_ = jet::HostFileSystem();
};

int Look(Weather& weather, const QString& hostPath) {
  if (const int failure = weather.Next(hostPath)) return failure;
  struct stat status {};
  return ::stat(QFile::encodeName(hostPath).constData(), &status) == 0 ? 0 : errno;
}

}  // namespace

FlakyDrive::FlakyDrive(const QStringList& folders, unsigned seed)
    : weather_(std::make_shared<Weather>(folders, seed)),
      files_(std::make_unique<FlakyFiles>(weather_)),
      databases_(*files_),
      looks_([weather = weather_](const QString& path) { return Look(*weather, path); }),
      calls_([weather = weather_](runtime::FileCall, const QString& path) {
        return weather->Next(path) != 0 ? EIO : 0;
      }) {}

FlakyDrive::~FlakyDrive() = default;

void FlakyDrive::Hold(bool well) {
  const std::lock_guard lock(weather_->mutex);
  weather_->held = well;
  weather_->kind = Weather::Well;
}

int FlakyDrive::Hindered() const {
  const std::lock_guard lock(weather_->mutex);
  return weather_->hindered;
}

}  // namespace testing_support
