// SPDX-License-Identifier: MIT
#pragma once

#include <QIdentityProxyModel>

namespace desktop {

// Shows the sizes and dates of a QFileSystemModel in Dutch; Qt uses the locale of the desktop for them.
class DutchFileModel : public QIdentityProxyModel {
  Q_OBJECT

 public:
  using QIdentityProxyModel::QIdentityProxyModel;

  QVariant data(const QModelIndex& index, int role) const override;
};

}  // namespace desktop
