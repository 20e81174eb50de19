// SPDX-License-Identifier: MIT
#include "export/FolderSelect.h"

#include "data/Messages.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/desktop/FileChooser.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

// Start folder of the chooser. A server's address has no folder, and an unmapped drive is no error: the user is about
// to choose another folder.
QString HostFolder(const QString& folder) {
  if (dao::IsServerPath(folder)) return {};
  try {
    return runtime::HostPath(folder);
  } catch (const runtime::Error&) {
    return {};
  }
}

}  // namespace

FolderSelect::FolderSelect(QWidget* owner, const QString& name) : QObject(owner), owner_(owner) {
  setObjectName(name);
}

QString FolderSelect::Browse() {
  const QString start = HostFolder(folder_);
  const QString chosen = desktop::ChooseFolder(owner_, prompt_, start, mayCreate_);
  if (chosen == start) return folder_;
  folder_ = runtime::PathText(chosen);
  if (!runtime::IsMapped(chosen)) {
    ShowItemsMessage(
        u"De map '%1' ligt buiten de schijven van ovalis.ini. Andere computers vinden die map zo niet."_s.arg(chosen),
        kStyleExclamation);
  }
  return folder_;
}
