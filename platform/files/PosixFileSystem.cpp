// SPDX-License-Identifier: MIT
// The system calls of this library; no other source makes any.
#include "platform/files/Error.h"
#include "platform/files/FileSystem.h"
#include "platform/files/Folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace files {
namespace {

int Result(int result) {
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

FileStatus StatusOf(const struct stat& found) {
  FileStatus status;
  status.kind = S_ISREG(found.st_mode)   ? FileKind::Regular
                : S_ISDIR(found.st_mode) ? FileKind::Folder
                                         : FileKind::Other;
  status.identity = {found.st_dev, found.st_ino};
  status.size = static_cast<std::uint64_t>(found.st_size);
  status.modifiedNs = std::int64_t{found.st_mtim.tv_sec} * 1'000'000'000 + found.st_mtim.tv_nsec;
  status.links = found.st_nlink;
  status.owner = found.st_uid;
  status.group = found.st_gid;
  status.permissions = found.st_mode & 07777;
  return status;
}

// 0 for a regular file, else the negative errno with which it is refused.
int Refusal(int descriptor) {
  struct stat found = {};
  if (::fstat(descriptor, &found) < 0) return -errno;
  if (S_ISDIR(found.st_mode)) return -EISDIR;
  return S_ISREG(found.st_mode) ? 0 : -ENXIO;
}

// A descriptor, or a negative errno.
int Opened(const char* path, int flags, mode_t permissions) {
  const int descriptor = ::open(path, flags, permissions);
  return descriptor < 0 ? -errno : descriptor;
}

// As open(2), for regular files only. O_NONBLOCK avoids the wait for the other end of a pipe, but open() then also
// fails while a file server holds a lease on a regular file. The kernel ends a lease, so that wait is made after the
// kind of the file is known.
int OpenRegular(const char* path, int flags, mode_t permissions) {
  int descriptor = Opened(path, flags | O_NONBLOCK, permissions);
  if (descriptor == -EWOULDBLOCK) {
    const int pathOnly = Opened(path, O_PATH | O_CLOEXEC | (flags & O_NOFOLLOW), 0);
    if (pathOnly < 0) return pathOnly;
    descriptor = Refusal(pathOnly);
    const std::string same = "/proc/self/fd/" + std::to_string(pathOnly);
    if (descriptor == 0) descriptor = Opened(same.c_str(), flags & ~(O_CREAT | O_EXCL | O_NOFOLLOW), 0);
    ::close(pathOnly);
  }
  const bool isNew = (flags & O_EXCL) != 0;
  if (descriptor < 0 || isNew) return descriptor;
  const int refusal = Refusal(descriptor);
  if (refusal == 0) return descriptor;
  ::close(descriptor);
  return refusal;
}

struct Closing {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

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

  int RawTruncate(std::uint64_t size) override { return Result(::ftruncate(descriptor_, static_cast<off_t>(size))); }
  int RawSync() override { return Result(::fdatasync(descriptor_)); }

  int RawLock(ByteRange range, LockKind kind) override {
    struct flock request = LockRequest(range, TypeOf(kind));
    return Result(::fcntl(descriptor_, F_OFD_SETLK, &request));
  }

  int RawUnlock(ByteRange range) override {
    struct flock request = LockRequest(range, F_UNLCK);
    return Result(::fcntl(descriptor_, F_OFD_SETLK, &request));
  }

  int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) override {
    struct flock request = LockRequest(range, TypeOf(kind));
    if (::fcntl(descriptor_, F_OFD_GETLK, &request) < 0) return -errno;
    *found = request.l_type != F_UNLCK;
    if (*found) *where = static_cast<std::uint64_t>(request.l_start);
    return 0;
  }

  int RawLockWhole() override { return Result(::flock(descriptor_, LOCK_EX | LOCK_NB)); }

  int RawStatus(FileStatus* status) override {
    struct stat found = {};
    if (::fstat(descriptor_, &found) < 0) return -errno;
    *status = StatusOf(found);
    return 0;
  }

  int RawSetOwner(std::uint32_t owner, std::uint32_t group) override {
    return Result(::fchown(descriptor_, owner, group));
  }
  int RawSetPermissions(unsigned permissions) override { return Result(::fchmod(descriptor_, permissions)); }

 private:
  int descriptor_;
};

class PosixFileSystem final : public FileSystem {
 public:
  int RawOpen(const Path& path, const OpenRequest& request, std::unique_ptr<File>* file) override {
    const int flags = Flags(request.mode) | O_CLOEXEC | O_NOCTTY | (request.followLink ? 0 : O_NOFOLLOW);
    const int descriptor = OpenRegular(path.c_str(), flags, request.permissions);
    if (descriptor < 0) return descriptor;
    *file = std::make_unique<PosixFile>(path.string(), descriptor);
    return 0;
  }

  int RawStatus(const Path& path, FileStatus* status) override {
    struct stat found = {};
    if (::stat(path.c_str(), &found) < 0) return -errno;
    *status = StatusOf(found);
    return 0;
  }

  int RawRealPath(const Path& path, Path* real) override {
    const std::unique_ptr<char, decltype(&std::free)> found(::realpath(path.c_str(), nullptr), &std::free);
    if (found == nullptr) return -errno;
    *real = found.get();
    return 0;
  }

  int RawRename(const Path& from, const Path& to) override { return Result(::rename(from.c_str(), to.c_str())); }
  int RawRenameNew(const Path& from, const Path& to) override {
    return Result(::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE));
  }
  int RawLink(const Path& from, const Path& to) override { return Result(::link(from.c_str(), to.c_str())); }
  int RawRemove(const Path& path) override { return Result(::unlink(path.c_str())); }

  int RawSyncFolder(const Path& folder) override {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return -errno;
    const int result = Result(::fsync(descriptor));
    ::close(descriptor);
    // Some network file systems cannot sync a folder; their renames are as durable as the server makes them.
    return result == -EINVAL || result == -ENOTSUP ? 0 : result;
  }

  int RawList(const Path& folder, std::vector<Path>* names) override {
    const std::unique_ptr<DIR, Closing> open(::opendir(folder.c_str()));
    if (open == nullptr) return -errno;
    names->clear();
    for (errno = 0; const dirent* entry = ::readdir(open.get()); errno = 0) {
      const Path name = entry->d_name;
      if (name != "." && name != "..") names->push_back(name);
    }
    return -errno;
  }

 private:
  static int Flags(OpenMode mode) {
    switch (mode) {
      case OpenMode::Read:
        return O_RDONLY;
      case OpenMode::Write:
        return O_RDWR;
      case OpenMode::Create:
        return O_RDWR | O_CREAT | O_EXCL;
      case OpenMode::OpenOrCreate:
        return O_RDWR | O_CREAT;
      case OpenMode::ReadOrCreate:
        return O_RDONLY | O_CREAT;
      case OpenMode::Append:
        return O_WRONLY | O_APPEND | O_CREAT;
    }
    return O_RDONLY;
  }
};

// The permissions of a folder that match those of a file: readers also need the right to enter the folder.
unsigned FolderPermissions(unsigned permissions) {
  unsigned folder = permissions & 0666;
  for (const unsigned all : {0700U, 0070U, 0007U}) {
    if ((folder & all) != 0) folder |= all & 0111;
  }
  return folder | 0700;
}

void ThrowUnlessMade(int result, const std::filesystem::path& path) {
  if (result >= 0) return;
  throw Error(SystemError("aanmaken", path.string(), -result).Code(),
              "Kan de map '" + path.string() + "' niet maken: " + SystemReason(-result) + ".", -result);
}

}  // namespace

void MakeFolder(const std::filesystem::path& path, const FileStatus& file) {
  constexpr mode_t kFolderOfOwner = 0700;
  const int made = Result(::mkdir(path.c_str(), kFolderOfOwner));
  struct stat found = {};
  if (made == -EEXIST && ::stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode)) return;
  ThrowUnlessMade(made, path);
  const int descriptor = Opened(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC, 0);
  ThrowUnlessMade(descriptor, path);
  FileStatus access = file;
  access.permissions = FolderPermissions(file.permissions);
  PosixFile(path.string(), descriptor).TakeAccessOf(access);
}

FileSystem& HostFileSystem() {
  static PosixFileSystem host;
  return host;
}

}  // namespace files
