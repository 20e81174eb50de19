// SPDX-License-Identifier: MIT
#include "platform/dao/JetStorage.h"

#include "platform/dao/JetTable.h"
#include "platform/dao/JetTableDef.h"
#include "platform/dao/OpenFiles.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/dao/postgres/ServerStorage.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/database/Database.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <cerrno>
#include <filesystem>
#include <memory>

namespace dao {
namespace {

class JetReading : public Transaction {
 public:
  explicit JetReading(const JetFile& file) : turn_(file.Database()) {}
  void Commit() override {}

 private:
  jet::ReadTurn turn_;
};

class JetWriting : public Transaction {
 public:
  explicit JetWriting(const JetFile& file) : file_(file), turn_(file.Database()) {}
  void Commit() override {
    file_.WithUserErrors([&] { turn_.Commit(); });
  }

 private:
  const JetFile file_;  // must outlive turn_
  jet::WriteTurn turn_;
};

void PlaceNewFile(const std::filesystem::path& path, const files::Bytes& content) {
  files::AtomicFile file(path, Files());
  file.Write({reinterpret_cast<const char*>(content.data()), content.size()});
  if (!file.CommitNew(path)) throw jet::SystemError("aanmaken", path.string(), EEXIST);
}

}  // namespace

bool JetStorage::IsSameFile(const Storage& other) const {
  const auto* jet = dynamic_cast<const JetStorage*>(&other);
  return jet != nullptr && file_.Database().IsSameFile(jet->file_.Database());
}

std::unique_ptr<Transaction> JetStorage::Begin(Access access) {
  return file_.WithUserErrors([&]() -> std::unique_ptr<Transaction> {
    if (access == Access::Read) return std::make_unique<JetReading>(file_);
    return std::make_unique<JetWriting>(file_);
  });
}

QStringList JetStorage::TableNames() {
  return file_.WithUserErrors([&] {
    QStringList names;
    for (const std::u16string& name : file_.Database().TableNames())
      names += QString::fromStdU16String(name);
    return names;
  });
}

std::unique_ptr<Table> JetStorage::OpenTable(const QString& name) {
  return file_.WithUserErrors([&]() -> std::unique_ptr<Table> {
    const jet::CatalogEntry* entry = file_.Database().Objects().FindTable(name.toStdU16String());
    if (entry == nullptr || !entry->IsUserTable()) return nullptr;
    return std::make_unique<JetTable>(file_, file_.Database().OpenTable(*entry));
  });
}

void JetStorage::CreateTable(const TableDef& table) {
  file_.WithUserErrors([&] { file_.Database().CreateTable(StoredDefinition(table)); });
}

std::unique_ptr<Storage> OpenStorage(const QString& pathText, const OpenOptions& options) {
  if (IsServerPath(pathText)) return std::make_unique<ServerStorage>(pathText, options);
  runtime::RequireThere(pathText);
  const QString hostPath = runtime::HostPath(pathText);
  return std::make_unique<JetStorage>(JetFile(
      pathText, hostPath, JetFile::WithUserErrors(pathText, hostPath, [&] { return OpenFile(hostPath, options); })));
}

void CreateStorage(const QString& pathText) {
  if (IsServerPath(pathText)) return CreateServerStorage(pathText, [](const QString&) {});
  const QString hostPath = runtime::HostPath(pathText);
  JetFile::WithUserErrors(pathText, hostPath, [&] { jet::Database::Create(EncodedPath(hostPath), Files()); });
}

void CreateStorage(const QString& pathText, const std::function<void(std::unique_ptr<Storage>)>& fill) {
  if (IsServerPath(pathText)) {
    return CreateServerStorage(pathText, [&](const QString& unfinished) { fill(OpenStorage(unfinished)); });
  }
  const QString hostPath = runtime::HostPath(pathText);
  const std::filesystem::path path = EncodedPath(hostPath);
  JetFile::WithUserErrors(pathText, hostPath, [&] {
    files::MemoryFileSystem memory;
    jet::Database::Create(path, memory);
    jet::OpenOptions writing;
    writing.writable = true;
    fill(std::make_unique<JetStorage>(JetFile(pathText, hostPath, jet::Database::Open(path, writing, memory))));
    PlaceNewFile(path, memory.Get(path));
  });
}

}  // namespace dao
