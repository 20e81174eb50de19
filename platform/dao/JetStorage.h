// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/JetFile.h"
#include "platform/dao/Storage.h"

#include <memory>

namespace dao {

// A Jet 4 database file.
class JetStorage : public Storage {
 public:
  explicit JetStorage(JetFile file) : file_(std::move(file)) {}

  const QString& PathText() const override { return file_.PathText(); }
  bool IsSameFile(const Storage& other) const override;
  std::unique_ptr<Transaction> Begin(Access access) override;
  QStringList TableNames() override;
  std::unique_ptr<Table> OpenTable(const QString& name) override;
  void CreateTable(const TableDef& table) override;

 private:
  JetFile file_;
};

}  // namespace dao
