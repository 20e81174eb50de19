// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Error.h"

#include <QString>

#include <memory>
#include <utility>

namespace jet {
class Database;
}

namespace dao {

// An open Jet 4 file with the path text that the user gave.
class JetFile {
 public:
  JetFile(QString pathText, QString hostPath, std::shared_ptr<jet::Database> database)
      : pathText_(std::move(pathText)), hostPath_(std::move(hostPath)), database_(std::move(database)) {}

  const QString& PathText() const { return pathText_; }
  jet::Database& Database() const { return *database_; }

  // Runs `work`; converts its jet::Error to a runtime::Error with the path text of the file.
  template <class Work>
  auto WithUserErrors(Work work) const -> decltype(work()) {
    return WithUserErrors(pathText_, hostPath_, std::move(work));
  }
  template <class Work>
  static auto WithUserErrors(const QString& pathText, const QString& hostPath, Work work) -> decltype(work()) {
    try {
      return work();
    } catch (const jet::Error& error) {
      RethrowForUser(pathText, hostPath, error);
    }
  }

 private:
  [[noreturn]] static void RethrowForUser(const QString& pathText, const QString& hostPath, const jet::Error& error);

  QString pathText_;
  QString hostPath_;
  std::shared_ptr<jet::Database> database_;
};

}  // namespace dao
