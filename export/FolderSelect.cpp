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

// A server's address is no folder, and a folder on a drive that is not mapped is no reason to refuse: the user is about
// to choose a better one.
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
