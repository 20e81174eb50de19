#pragma once

#include "platform/dao/InterimConnection.h"
#include "platform/dao/Storage.h"

namespace dao {

// A database in the interim file: an ordinary SQLite file with one more table, which holds the definitions.
class InterimStorage : public Storage {
 public:
  InterimStorage(const QString& pathText, const QString& hostPath) : connection_(pathText, hostPath, false) {}

  const QString& PathText() const override { return connection_.PathText(); }
  bool IsSameFile(const Storage& other) const override;
  std::unique_ptr<Transaction> Begin(Access access) override;
  QStringList TableNames() override;
  std::unique_ptr<Table> OpenTable(const QString& name) override;
  void CreateTable(const TableDef& table) override;

 private:
  InterimConnection connection_;
};

}  // namespace dao
