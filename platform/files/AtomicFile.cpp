#include "platform/files/AtomicFile.h"

#include "platform/files/Error.h"

#include <cerrno>
#include <string>

namespace files {
namespace {

constexpr int kMostTemporaryNames = 1000;

ByteView AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::filesystem::path FreeName(FileSystem& files, const std::filesystem::path& path) {
  for (int number = 1; number < kMostTemporaryNames; ++number) {
    std::filesystem::path candidate = path;
    candidate += "." + std::to_string(number) + ".tmp";
    if (!files.Exists(candidate)) return candidate;
  }
  throw SystemError("aanmaken", path.string(), EEXIST);
}

}  // namespace

AtomicFile::AtomicFile(const std::filesystem::path& path, FileSystem& files)
    : AtomicFile(path, FreeName(files, path), files) {}

AtomicFile::AtomicFile(const std::filesystem::path& path, const std::filesystem::path& temporary, FileSystem& files)
    : files_(files), path_(path), temporary_(temporary), file_(files.Open(temporary, OpenMode::Create)) {}

AtomicFile::~AtomicFile() {
  if (done_) return;
  file_.reset();
  try {
    files_.Remove(temporary_);
  } catch (const Error&) {
    // The reason why Commit was not reached is what the user hears of.
  }
}

void AtomicFile::Write(std::string_view content) {
  file_->WriteAt(written_, AsBytes(content));
  written_ += content.size();
}

void AtomicFile::Sync() {
  file_->Sync();
}

void AtomicFile::Commit() {
  if (files_.Exists(path_)) files_.CopyPermissions(path_, temporary_);
  Sync();
  files_.Rename(temporary_, path_);
  done_ = true;
  files_.SyncFolderOf(path_);
}

void WriteFile(const std::filesystem::path& path, std::string_view content, FileSystem& files) {
  AtomicFile file(path, files);
  file.Write(content);
  file.Commit();
}

}  // namespace files
