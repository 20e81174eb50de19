// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerStorage.h"

#include "platform/dao/postgres/ServerTable.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

class ServerTransaction : public Transaction {
 public:
  ServerTransaction(std::shared_ptr<ServerSession> session, ServerAddress address)
      : address_(std::move(address)), session_(std::move(session)) {}
  void Commit() override {
    try {
      session_->Commit();
    } catch (...) {
      ForgetCatalog(address_);  // it may contain tables that were rolled back
      throw;
    }
  }

 private:
  const ServerAddress address_;
  std::shared_ptr<ServerSession> session_;
};

// The definition as a file would return it: primary keys are unique and required, indexes are sorted by name.
TableDef AsStored(TableDef table) {
  for (IndexDef& index : table.indexes) {
    index.unique = index.unique || index.primary;
    index.required = index.required || index.primary;
  }
  std::sort(table.indexes.begin(), table.indexes.end(), [](const IndexDef& left, const IndexDef& right) {
    return left.name.compare(right.name, Qt::CaseInsensitive) < 0;
  });
  return table;
}

// Runs statements as one transaction.
void RunAlone(const ServerAddress& address, const std::string& statements) {
  try {
    Lease(address)->Run(statements);
  } catch (const Refusal& refusal) {
    throw runtime::Error(RefusalError(address, refusal));
  } catch (const ConnectionLost&) {
    throw runtime::Error(ConnectionLostError(address));
  }
}

QString UnfinishedName(const QString& schema) {
  const QString suffix = u"~nieuw"_s;
  constexpr qsizetype kLongest = 63;  // bytes
  constexpr qsizetype kShort = 14;    // characters, of at most four bytes
  const bool fits = (schema + suffix).toUtf8().size() <= kLongest;
  return (fits ? schema : schema.left(kShort)) + suffix;
}

// An empty schema of that name, made by an administrator, is replaced; one with tables is an error of the server.
std::string RenameStatements(const QString& from, const QString& to) {
  return "DROP SCHEMA IF EXISTS " + QuotedServerName(to) + ";ALTER SCHEMA " + QuotedServerName(from) + " RENAME TO " +
         QuotedServerName(to);
}

}  // namespace

ServerStorage::ServerStorage(const QString& pathText, const OpenOptions& options)
    : address_(pathText), readOnly_(options.readOnly), catalog_(CatalogOf(address_)) {}

bool ServerStorage::IsSameFile(const Storage& other) const {
  const auto* server = dynamic_cast<const ServerStorage*>(&other);
  return server != nullptr && address_.Url() == server->address_.Url() && catalog_->schema == server->catalog_->schema;
}

std::unique_ptr<Transaction> ServerStorage::Begin(Access access) {
  if (access == Access::Write && readOnly_) {
    throw runtime::Error(u"'%1' is alleen om te lezen geopend."_s.arg(PathText()));
  }
  catalog_ = CatalogOf(address_);
  if (access == Access::Write) CheckUncertainChange(address_, *catalog_);
  auto session = std::make_shared<ServerSession>(address_, catalog_, access);
  session_ = session;
  return std::make_unique<ServerTransaction>(std::move(session), address_);
}

void ServerStorage::ExpectOneRead() {
  if (const auto session = session_.lock()) session->ExpectOneQuery();
}

QStringList ServerStorage::TableNames() {
  QStringList names;
  for (const TableDef& table : catalog_->tables)
    names += table.name;
  return names;
}

std::unique_ptr<Table> ServerStorage::OpenTable(const QString& name) {
  const auto table = catalog_->tables.constFind(name.toLower());
  if (table == catalog_->tables.constEnd()) return nullptr;
  return std::make_unique<ServerTable>(session_.lock(), *table);
}

void ServerStorage::CreateTable(const TableDef& table) {
  const TableDef stored = AsStored(table);
  const auto session = session_.lock();
  session->Change(TableStatements(session->Line(), *catalog_, stored));
  catalog_->tables.insert(stored.name.toLower(), stored);
  ForgetCatalog(address_);
}

bool ServerStorageExists(const QString& pathText) {
  return CatalogExists(ServerAddress(pathText));
}

void CreateServerStorage(const QString& pathText, const std::function<void(const QString& unfinished)>& fill) {
  const ServerAddress address(pathText);
  ForgetCatalog(address);
  if (ServerStorageExists(pathText)) throw runtime::Error(u"'%1' bestaat al."_s.arg(pathText));
  const ServerAddress unfinished(address.Url() + u'\\' + UnfinishedName(address.Schema()) + u".mdb"_s);
  const std::string name = QuotedServerName(unfinished.Schema());
  ForgetCatalog(unfinished);
  // What a killed program left is removed.
  RunAlone(address, "DROP SCHEMA IF EXISTS " + name + " CASCADE;" + SchemaStatements(unfinished.Schema()));
  fill(unfinished.PathText());
  ForgetCatalog(unfinished);
  RunAlone(address, RenameStatements(unfinished.Schema(), address.Schema()));
}

void DescribeServerStorage(const QString& pathText, const QString& description) {
  const ServerAddress address(pathText);
  RunAlone(address, "COMMENT ON SCHEMA " + QuotedServerName(CatalogOf(address)->schema) + " IS " +
                        Lease(address)->Literal(description.toStdString()));
}

}  // namespace dao
