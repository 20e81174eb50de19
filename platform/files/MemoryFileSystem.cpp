// SPDX-License-Identifier: MIT
#include "platform/files/MemoryFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

namespace files {

struct MemoryFileSystem::Node {
  struct Held {
    const void* owner;
    ByteRange range;
    LockKind kind;
  };

  std::mutex mutex;
  FileStatus status;
  Bytes content;
  std::vector<Held> locks;
  const void* wholeOwner = nullptr;
};

namespace {

using Node = MemoryFileSystem::Node;

bool Overlap(ByteRange a, ByteRange b) {
  return a.start < b.start + b.length && b.start < a.start + a.length;
}

FileStatus StatusOf(Node& node) {
  const std::lock_guard guard(node.mutex);
  FileStatus status = node.status;
  status.size = node.content.size();
  return status;
}

class MemoryFile final : public File {
 public:
  MemoryFile(std::string name, std::shared_ptr<Node> node, OpenMode mode)
      : File(std::move(name)),
        node_(std::move(node)),
        writable_(mode != OpenMode::Read && mode != OpenMode::ReadOrCreate),
        appends_(mode == OpenMode::Append) {}

  ~MemoryFile() override {
    const std::lock_guard guard(node_->mutex);
    std::erase_if(node_->locks, [this](const Node::Held& held) { return held.owner == this; });
    if (node_->wholeOwner == this) node_->wholeOwner = nullptr;
  }

  std::int64_t RawRead(std::uint64_t offset, ByteSpan into) override {
    const std::lock_guard guard(node_->mutex);
    if (offset >= node_->content.size()) return 0;
    const std::size_t count = std::min<std::size_t>(into.size(), node_->content.size() - offset);
    std::copy_n(node_->content.begin() + static_cast<std::ptrdiff_t>(offset), count, into.begin());
    return static_cast<std::int64_t>(count);
  }

  std::int64_t RawWrite(std::uint64_t offset, ByteView bytes) override {
    if (!writable_) return -EBADF;
    const std::lock_guard guard(node_->mutex);
    if (appends_) offset = node_->content.size();
    if (node_->content.size() < offset + bytes.size()) node_->content.resize(offset + bytes.size());
    std::copy(bytes.begin(), bytes.end(), node_->content.begin() + static_cast<std::ptrdiff_t>(offset));
    return static_cast<std::int64_t>(bytes.size());
  }

  int RawTruncate(std::uint64_t size) override {
    if (!writable_) return -EINVAL;
    const std::lock_guard guard(node_->mutex);
    node_->content.resize(size);
    return 0;
  }

  int RawSync() override { return 0; }

  int RawLock(ByteRange range, LockKind kind) override {
    if (!writable_ && kind == LockKind::Exclusive) return -EBADF;
    const std::lock_guard guard(node_->mutex);
    if (Conflict(range, kind) != nullptr) return -EAGAIN;
    Release(range);
    node_->locks.push_back({this, range, kind});
    return 0;
  }

  int RawUnlock(ByteRange range) override {
    const std::lock_guard guard(node_->mutex);
    Release(range);
    return 0;
  }

  int RawFindLock(ByteRange range, LockKind kind, bool* found, std::uint64_t* where) override {
    const std::lock_guard guard(node_->mutex);
    const Node::Held* held = Conflict(range, kind);
    *found = held != nullptr;
    if (held != nullptr) *where = held->range.start;
    return 0;
  }

  int RawLockWhole() override {
    const std::lock_guard guard(node_->mutex);
    if (node_->wholeOwner != nullptr && node_->wholeOwner != this) return -EAGAIN;
    node_->wholeOwner = this;
    return 0;
  }

  int RawStatus(FileStatus* status) override {
    *status = StatusOf(*node_);
    return 0;
  }

  int RawSetOwner(std::uint32_t owner, std::uint32_t group) override {
    const std::lock_guard guard(node_->mutex);
    if (owner != kUnchanged) node_->status.owner = owner;
    if (group != kUnchanged) node_->status.group = group;
    return 0;
  }

  int RawSetPermissions(unsigned permissions) override {
    const std::lock_guard guard(node_->mutex);
    node_->status.permissions = permissions;
    return 0;
  }

 private:
  const Node::Held* Conflict(ByteRange range, LockKind kind) const {
    const auto conflicts = [&](const Node::Held& held) {
      return held.owner != this && Overlap(held.range, range) &&
             (kind == LockKind::Exclusive || held.kind == LockKind::Exclusive);
    };
    const auto first = std::find_if(node_->locks.begin(), node_->locks.end(), conflicts);
    return first == node_->locks.end() ? nullptr : &*first;
  }

  // When only a part of a lock is released, the rest of its bytes remain locked, as on a disk. Releasing complete locks
  // needs no memory, as on a disk.
  void Release(ByteRange range) {
    std::vector<Node::Held>& locks = node_->locks;
    const auto isReleased = [&](const Node::Held& held) { return held.owner == this && Overlap(held.range, range); };
    const std::uint64_t end = range.start + range.length;
    for (std::size_t i = 0, count = locks.size(); i < count; ++i) {
      const Node::Held held = locks[i];
      if (!isReleased(held)) continue;
      const std::uint64_t heldEnd = held.range.start + held.range.length;
      if (held.range.start < range.start)
        locks.push_back({this, {held.range.start, range.start - held.range.start}, held.kind});
      if (end < heldEnd) locks.push_back({this, {end, heldEnd - end}, held.kind});
    }
    std::erase_if(locks, isReleased);
  }

  std::shared_ptr<Node> node_;
  bool writable_;
  bool appends_;
};

}  // namespace

std::shared_ptr<Node> MemoryFileSystem::Make() {
  auto node = std::make_shared<Node>();
  node->status.identity.inode = nextInode_++;
  return node;
}

void MemoryFileSystem::Put(const Path& path, Bytes content) {
  const std::lock_guard guard(mutex_);
  auto node = Make();
  node->content = std::move(content);
  nodes_[path] = std::move(node);
}

Bytes MemoryFileSystem::Get(const Path& path) {
  const std::lock_guard guard(mutex_);
  const auto found = nodes_.find(path);
  if (found == nodes_.end()) return {};
  const std::lock_guard nodeGuard(found->second->mutex);
  return found->second->content;
}

std::vector<FileSystem::Path> MemoryFileSystem::Names() {
  const std::lock_guard guard(mutex_);
  std::vector<Path> names;
  for (const auto& [name, node] : nodes_)
    names.push_back(name);
  return names;
}

int MemoryFileSystem::RawOpen(const Path& path, const OpenRequest& request, std::unique_ptr<File>* file) {
  const std::lock_guard guard(mutex_);
  const auto found = nodes_.find(path);
  const bool there = found != nodes_.end();
  if (there && request.mode == OpenMode::Create) return -EEXIST;
  if (!there && (request.mode == OpenMode::Read || request.mode == OpenMode::Write)) return -ENOENT;
  std::shared_ptr<Node> node = there ? found->second : nodes_[path] = Make();
  if (!there) node->status.permissions = request.permissions;
  *file = std::make_unique<MemoryFile>(path.string(), std::move(node), request.mode);
  return 0;
}

int MemoryFileSystem::RawStatus(const Path& path, FileStatus* status) {
  const std::lock_guard guard(mutex_);
  const auto found = nodes_.find(path);
  if (found == nodes_.end()) return -ENOENT;
  *status = StatusOf(*found->second);
  return 0;
}

int MemoryFileSystem::RawRealPath(const Path& path, Path* real) {
  *real = path;
  return 0;
}

int MemoryFileSystem::RawRename(const Path& from, const Path& to) {
  const std::lock_guard guard(mutex_);
  const auto found = nodes_.find(from);
  if (found == nodes_.end()) return -ENOENT;
  std::shared_ptr<Node> node = found->second;
  nodes_.erase(found);
  nodes_[to] = std::move(node);
  return 0;
}

int MemoryFileSystem::RawRenameNew(const Path& from, const Path& to) {
  const int result = RawLink(from, to);
  return result < 0 ? result : RawRemove(from);
}

int MemoryFileSystem::RawLink(const Path& from, const Path& to) {
  const std::lock_guard guard(mutex_);
  const auto found = nodes_.find(from);
  if (found == nodes_.end()) return -ENOENT;
  return nodes_.emplace(to, found->second).second ? 0 : -EEXIST;
}

int MemoryFileSystem::RawRemove(const Path& path) {
  const std::lock_guard guard(mutex_);
  return nodes_.erase(path) == 0 ? -ENOENT : 0;
}

int MemoryFileSystem::RawSyncFolder(const Path&) {
  return 0;
}

int MemoryFileSystem::RawList(const Path& folder, std::vector<Path>* names) {
  const std::lock_guard guard(mutex_);
  names->clear();
  for (const auto& [path, node] : nodes_) {
    if (path.parent_path() == folder) names->push_back(path.filename());
  }
  return 0;
}

}  // namespace files
