// SPDX-License-Identifier: MIT
#include "platform/desktop/DutchFileModel.h"

#include <QDateTime>
#include <QFileSystemModel>
#include <QLocale>

namespace desktop {

using namespace Qt::StringLiterals;

QVariant DutchFileModel::data(const QModelIndex& index, int role) const {
  constexpr int kSizeColumn = 1;
  constexpr int kDateColumn = 3;
  const auto* files = qobject_cast<const QFileSystemModel*>(sourceModel());
  if (role != Qt::DisplayRole || files == nullptr) return QIdentityProxyModel::data(index, role);
  const QModelIndex file = mapToSource(index);
  if (index.column() == kSizeColumn && !files->isDir(file)) {
    return QLocale(QLocale::Dutch).formattedDataSize(files->size(file), 1, QLocale::DataSizeTraditionalFormat);
  }
  if (index.column() == kDateColumn) return files->lastModified(file).toString(u"dd-MM-yyyy HH:mm"_s);
  return QIdentityProxyModel::data(index, role);
}

}  // namespace desktop
