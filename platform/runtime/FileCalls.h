#pragma once
#include <QByteArray>
#include <QString>

#include <functional>

namespace runtime {

// The calls that change files, one function each, and the only place of this library that makes them. Paths are host
// paths. They answer 0 or an errno.

enum class FileCall { Open, Write, Sync, Rename, Remove, SyncFolder };

// An open file that closes itself.
class Descriptor {
 public:
  // Opens for writing (flags as of open(2)); a failure is in Failure().
  Descriptor(const QString& hostPath, int flags);
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Failure() const { return failure_; }
  int Get() const { return fd_; }
  // Every byte, or an errno.
  int Write(const QByteArray& bytes) const;
  int Sync() const;

 private:
  QString path_;
  int fd_ = -1;
  int failure_ = 0;
};

// Replaces `to` in one step.
int RenameFile(const QString& from, const QString& to);
// The same only when `to` does not exist: EEXIST otherwise. Taking the name is one step. After a crash both may exist.
int RenameNewFile(const QString& from, const QString& to);
int RemoveFile(const QString& hostPath);
// Returns when the names in the folder that holds the file will survive a power cut.
int SyncFolderOf(const QString& hostPath);

// For tests: asked before each call; an errno other than 0 is what the call answers, without being made. Restores the
// real calls on destruction.
class FileCallScope {
 public:
  using Hook = std::function<int(FileCall call, const QString& hostPath)>;
  explicit FileCallScope(Hook hook);
  ~FileCallScope();
  FileCallScope(const FileCallScope&) = delete;
  FileCallScope& operator=(const FileCallScope&) = delete;

 private:
  Hook previous_;
};

}  // namespace runtime
