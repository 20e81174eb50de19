// SPDX-License-Identifier: MIT
#include "platform/dao/FrozenDatabase.h"

#include "platform/dao/JetFile.h"
#include "platform/dao/OpenFiles.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/Folder.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/storage/Storage.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <filesystem>

namespace dao {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 20;  // bytes copied or compared at once

std::unique_ptr<jet::File> OpenToRead(const std::filesystem::path& path) {
  return Files().Open(path, jet::OpenMode::Read);
}

jet::Bytes ReadChunk(jet::File& file, std::uint64_t offset) {
  jet::Bytes chunk(kChunk);
  chunk.resize(file.ReadAt(offset, chunk));
  return chunk;
}

}  // namespace

FrozenDatabase::FrozenDatabase(const QString& pathText, const QString& password) : pathText_(pathText) {
  runtime::RequireThere(pathText);
  const QString hostPath = runtime::HostPath(pathText);
  JetFile::WithUserErrors(pathText, hostPath, [&] {
    database_ = OpenFile(hostPath, {password, false});
    turn_ = std::make_unique<jet::WriteTurn>(*database_);
  });
}

FrozenDatabase::~FrozenDatabase() = default;

// Every commit changes the header: it has the commit counters.
bool FrozenDatabase::UnchangedDuring(const std::function<void()>& work) {
  jet::Storage& store = database_->Shared();
  const jet::FileIdentity identity = store.Identity();
  const std::uint64_t size = store.FileSize();
  const jet::PageRef header = store.Source().Read(0);
  turn_.reset();
  work();
  JetFile::WithUserErrors(pathText_, runtime::HostPath(pathText_),
                          [&] { turn_ = std::make_unique<jet::WriteTurn>(*database_); });
  return store.Identity() == identity && store.FileSize() == size && *store.Source().Read(0) == *header;
}

bool FrozenDatabase::IsSameAs(const QString& otherPathText) const {
  const QString hostPath = runtime::HostPath(otherPathText);
  return JetFile::WithUserErrors(otherPathText, hostPath, [&] {
    jet::File& mine = database_->Shared().OpenedFile();
    const auto other = OpenToRead(EncodedPath(hostPath));
    const std::uint64_t size = mine.Size();
    bool same = other->Size() == size;
    for (std::uint64_t offset = 0; same && offset < size; offset += kChunk)
      same = ReadChunk(mine, offset) == ReadChunk(*other, offset);
    return same;
  });
}

void FrozenDatabase::MakeFolder(const QString& folderPathText) const {
  const QString hostPath = runtime::HostPath(folderPathText);
  JetFile::WithUserErrors(folderPathText, hostPath,
                          [&] { files::MakeFolder(EncodedPath(hostPath), database_->Shared().OpenedFile().Status()); });
}

void FrozenDatabase::CopyTo(const QString& targetPathText) const {
  Place(*Prepare(targetPathText), targetPathText);
}

std::unique_ptr<files::AtomicFile> FrozenDatabase::Prepare(const QString& targetPathText) const {
  const QString hostPath = runtime::HostPath(targetPathText);
  return JetFile::WithUserErrors(targetPathText, hostPath, [&] {
    jet::File& source = database_->Shared().OpenedFile();
    auto target = std::make_unique<files::AtomicFile>(EncodedPath(hostPath), source.Status(), Files());
    const std::uint64_t size = source.Size();
    for (std::uint64_t offset = 0; offset < size; offset += kChunk) {
      const jet::Bytes chunk = ReadChunk(source, offset);
      target->Write({reinterpret_cast<const char*>(chunk.data()), chunk.size()});
    }
    target->Sync();
    return target;
  });
}

void FrozenDatabase::Refresh(files::AtomicFile& prepared, const QString& targetPathText) const {
  JetFile::WithUserErrors(targetPathText, runtime::HostPath(targetPathText), [&] {
    jet::File& source = database_->Shared().OpenedFile();
    const std::uint64_t size = source.Size();
    for (std::uint64_t offset = 0; offset < size; offset += kChunk) {
      const jet::Bytes chunk = ReadChunk(source, offset);
      prepared.Rewrite(offset, {reinterpret_cast<const char*>(chunk.data()), chunk.size()});
    }
    prepared.Truncate(size);
  });
}

void FrozenDatabase::Place(files::AtomicFile& prepared, const QString& targetPathText) {
  JetFile::WithUserErrors(targetPathText, runtime::HostPath(targetPathText), [&] { prepared.Commit(); });
}

}  // namespace dao
