#include "platform/dao/InterimStorage.h"

#include <QFile>
#include <QFileInfo>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/dao/InterimTable.h"
#include "platform/dao/TableDefText.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/SystemReason.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr std::array<char, 16> kSignature = {'S', 'Q', 'L', 'i', 't', 'e', ' ', 'f',
                                             'o', 'r', 'm', 'a', 't', ' ', '3', '\0'};

class InterimTransaction : public Transaction {
 public:
  InterimTransaction(InterimConnection& connection, Access access) : connection_(connection) {
    connection_.Run(access == Access::Write ? u"BEGIN IMMEDIATE"_s : u"BEGIN"_s);
  }
  ~InterimTransaction() override {
    if (!committed_) sqlite3_exec(connection_.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
  InterimTransaction(const InterimTransaction&) = delete;
  InterimTransaction& operator=(const InterimTransaction&) = delete;

  void Commit() override {
    connection_.Run(u"COMMIT"_s);
    committed_ = true;
  }

 private:
  InterimConnection& connection_;
  bool committed_ = false;
};

[[noreturn]] void CannotOpen(const QString& pathText, const QString& reason) {
  throw runtime::Error(u"Kan de database '%1' niet openen: %2."_s.arg(pathText, reason));
}

void RequireDatabase(const QString& pathText, const QString& hostPath) {
  if (QFileInfo(hostPath).isDir()) CannotOpen(pathText, runtime::SystemReason(EISDIR));
  std::FILE* file = std::fopen(QFile::encodeName(hostPath).constData(), "rb");
  if (file == nullptr) CannotOpen(pathText, runtime::SystemReason(errno));
  std::array<char, kSignature.size()> start{};
  const std::size_t read = std::fread(start.data(), 1, start.size(), file);
  std::fclose(file);
  if (read != start.size() || start != kSignature) CannotOpen(pathText, u"het is geen database"_s);
}

}  // namespace

bool InterimStorage::IsSameFile(const Storage& other) const {
  const auto* interim = dynamic_cast<const InterimStorage*>(&other);
  return interim != nullptr && QFileInfo(connection_.HostPath()) == QFileInfo(interim->connection_.HostPath());
}

std::unique_ptr<Transaction> InterimStorage::Begin(Access access) {
  return std::make_unique<InterimTransaction>(connection_, access);
}

QStringList InterimStorage::TableNames() {
  InterimStatement statement(connection_, u"SELECT name FROM \"~tables\""_s);
  QStringList names;
  while (statement.Step())
    names += TextOf(sqlite3_column_value(statement.Get(), 0));
  return names;
}

std::unique_ptr<Table> InterimStorage::OpenTable(const QString& name) {
  InterimStatement statement(connection_, u"SELECT definition FROM \"~tables\" WHERE name = ?"_s);
  Bind(statement.Get(), 1, Utf16(name));
  if (!statement.Step()) return nullptr;
  const auto* text = static_cast<const char*>(sqlite3_column_blob(statement.Get(), 0));
  const QByteArray definition(text, sqlite3_column_bytes(statement.Get(), 0));
  return std::make_unique<InterimTable>(connection_, TableDefOfText(definition));
}

void InterimStorage::CreateTable(const TableDef& table) {
  InterimTable::Create(connection_, table);
  InterimStatement statement(connection_, u"INSERT INTO \"~tables\" VALUES (?, ?)"_s);
  Bind(statement.Get(), 1, Utf16(table.name));
  const QByteArray text = TextOfTableDef(table);
  const Bytes bytes(text.begin(), text.end());
  Bind(statement.Get(), 2, std::span<const std::uint8_t>(bytes));
  statement.Step();
}

std::unique_ptr<Storage> OpenStorage(const QString& pathText) {
  runtime::RequireThere(pathText);
  const QString hostPath = runtime::HostPath(pathText);
  RequireDatabase(pathText, hostPath);
  return std::make_unique<InterimStorage>(pathText, hostPath);
}

void CreateStorage(const QString& pathText) {
  const QString hostPath = runtime::HostPath(pathText);
  if (QFileInfo::exists(hostPath)) {
    throw runtime::Error(u"Kan de database '%1' niet maken: het bestand bestaat al."_s.arg(pathText));
  }
  InterimConnection connection(pathText, hostPath, true);
  connection.Run(u"CREATE TABLE \"~tables\" (name TEXT PRIMARY KEY COLLATE %1, definition BLOB)"_s.arg(
      QLatin1StringView(kTextOrderName)));
}

}  // namespace dao
