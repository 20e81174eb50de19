// SPDX-License-Identifier: MIT
#include "platform/runtime/Counted.h"

#include <QLocale>

namespace runtime {

QString DutchNumber(qint64 count) {
  return QLocale(QLocale::Dutch).toString(qlonglong{count});
}

QString Counted(qint64 count, const QString& one, const QString& many) {
  return DutchNumber(count) + u' ' + (count == 1 ? one : many);
}

}  // namespace runtime
