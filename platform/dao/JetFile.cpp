// SPDX-License-Identifier: MIT
#include "platform/dao/JetFile.h"

#include "platform/jet/database/Database.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace dao {

void JetFile::RethrowForUser(const QString& pathText, const QString& hostPath, const jet::Error& error) {
  QString text = QString::fromUtf8(error.what()).replace(hostPath, pathText);
  if (error.Code() == jet::ErrorCode::Damaged && !text.contains(pathText)) {
    text = u"Het bestand '%1' is beschadigd: %2"_s.arg(pathText, text);
  }
  using enum runtime::Error::Outcome;
  throw runtime::Error(text, error.Code() == jet::ErrorCode::NotYetDurable ? Done : Failed);
}

}  // namespace dao
