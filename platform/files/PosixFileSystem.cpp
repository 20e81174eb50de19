// The system calls of this library, and the only place that makes them.
#include "platform/files/FileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>

namespace files {
namespace {

constexpr mode_t kNewFileMode = 0666;

int Answer(int result) {
  return result < 0 ? -errno : 0;
}

struct flock LockRequest(ByteRange range, short type) {
  struct flock request = {};
  request.l_type = type;
  request.l_whence = SEEK_SET;
  request.l_start = static_cast<off_t>(range.start);
  request.l_len = static_cast<off_t>(range.length);
  return request;
}

short TypeOf(LockKind kind) {
  return kind == LockKind::Shared ? F_RDLCK : F_WRLCK;
}

class PosixFile final : public File {
 public:
  PosixFile(std::string name, int descriptor) : File(std::move(name)), descriptor_(descriptor) {}
  ~PosixFile() override { ::close(descriptor_); }

  std::int64_t RawRead(std::uint64_t offset, ByteSpan into) override {
    const ssize_t count = ::pread(descriptor_, into.data(), into.size(), static_cast<off_t>(offset));
    return count < 0 ? -errno : count;
  }

  std::int64_t RawWrite(std::uint64_t offset, ByteView bytes) override {
    const ssize_t count = ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    return count < 0 ? -errno : count;
  }

  std::int64_t RawSize() override {
    struct stat status = {};
    return ::fstat(descriptor_, &status) < 0 ? -errno : static_cast<std::int64_t>(status.st_size);
  }

  int RawTruncate(std::uint64_t size) override { return Answer(::ftruncate(descriptor_, static_cast<off_t>(size))); }
  int RawSync() override { return Answer(::fdatasync(descriptor_)); }

  int RawLock(ByteRange range, LockKind kind) override {
    struct flock request = LockRequest(range, TypeOf(kind));
    return Answer(::fcntl(descriptor_, F_OFD_SETLK, &request));
  }

  int RawUnlock(ByteRange range) override {
    struct flock request = LockRequest(range, F_UNLCK);
    return Answer(::fcntl(descriptor_, F_OFD_SETLK, &request));
  }

  int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) override {
    struct flock request = LockRequest(range, TypeOf(kind));
    if (::fcntl(descriptor_, F_OFD_GETLK, &request) < 0) return -errno;
    *found = request.l_type != F_UNLCK;
    if (*found) *where = static_cast<std::uint64_t>(request.l_start);
    return 0;
  }

  int RawIdentity(FileIdentity* identity) override {
    struct stat status = {};
    if (::fstat(descriptor_, &status) < 0) return -errno;
    *identity = {status.st_dev, status.st_ino};
    return 0;
  }

 private:
  int descriptor_;
};

class PosixFileSystem final : public FileSystem {
 public:
  int RawOpen(const Path& path, OpenMode mode, std::unique_ptr<File>* file) override {
    const int descriptor = ::open(path.c_str(), Flags(mode), kNewFileMode);
    if (descriptor < 0) return -errno;
    struct stat status = {};
    if (::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
      ::close(descriptor);
      return -EISDIR;
    }
    *file = std::make_unique<PosixFile>(path.string(), descriptor);
    return 0;
  }

  int RawIdentity(const Path& path, FileIdentity* identity) override {
    struct stat status = {};
    if (::stat(path.c_str(), &status) < 0) return -errno;
    *identity = {status.st_dev, status.st_ino};
    return 0;
  }

  int RawRename(const Path& from, const Path& to) override { return Answer(::rename(from.c_str(), to.c_str())); }
  int RawRemove(const Path& path) override { return Answer(::unlink(path.c_str())); }

  int RawSyncFolder(const Path& folder) override {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return -errno;
    const int result = Answer(::fsync(descriptor));
    ::close(descriptor);
    // Some network file systems cannot sync a folder; their renames are as durable as the server makes them.
    return result == -EINVAL || result == -ENOTSUP ? 0 : result;
  }

  int RawCopyPermissions(const Path& model, const Path& path) override {
    struct stat status = {};
    if (::stat(model.c_str(), &status) < 0) return -errno;
    if (::chmod(path.c_str(), status.st_mode & 07777) < 0) return -errno;
    return Answer(::chown(path.c_str(), status.st_uid, status.st_gid));
  }

 private:
  static int Flags(OpenMode mode) {
    switch (mode) {
      case OpenMode::Read:
        return O_RDONLY | O_CLOEXEC;
      case OpenMode::Write:
        return O_RDWR | O_CLOEXEC;
      case OpenMode::Create:
        return O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC;
      case OpenMode::OpenOrCreate:
        return O_RDWR | O_CREAT | O_CLOEXEC;
    }
    return O_RDONLY | O_CLOEXEC;
  }
};

}  // namespace

FileSystem& HostFileSystem() {
  static PosixFileSystem host;
  return host;
}

}  // namespace files
