#pragma once

namespace files {
class FileSystem;
}

namespace dao {

// For tests: while it lives, this thread opens databases on another file system. Databases opened before are let go of.
class FileSystemScope {
 public:
  // `files` outlives the scope and every database opened in it.
  explicit FileSystemScope(files::FileSystem& files);
  ~FileSystemScope();
  FileSystemScope(const FileSystemScope&) = delete;
  FileSystemScope& operator=(const FileSystemScope&) = delete;

 private:
  files::FileSystem* previous_;
};

}  // namespace dao
