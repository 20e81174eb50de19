// SPDX-License-Identifier: MIT
#include "platform/desktop/LookParts.h"

namespace desktop::look {

using namespace Qt::StringLiterals;

QString OwnIcon(QStyle::StandardPixmap icon) {
  switch (icon) {
    case QStyle::SP_ArrowBack:
      return u"rew"_s;
    case QStyle::SP_ArrowForward:
      return u"ffw"_s;
    case QStyle::SP_FileDialogToParent:
      return u"omhoog"_s;
    case QStyle::SP_FileDialogNewFolder:
      return u"map-nieuw"_s;
    case QStyle::SP_FileDialogListView:
      return u"tegels"_s;
    case QStyle::SP_FileDialogDetailedView:
      return u"regels"_s;
    case QStyle::SP_ComputerIcon:
      return u"computer"_s;
    case QStyle::SP_DriveHDIcon:
    case QStyle::SP_DriveNetIcon:
      return u"schijf"_s;
    case QStyle::SP_DirIcon:
    case QStyle::SP_DirClosedIcon:
    case QStyle::SP_DirOpenIcon:
    case QStyle::SP_DirLinkIcon:
    case QStyle::SP_DirHomeIcon:
      return u"map"_s;
    case QStyle::SP_FileIcon:
    case QStyle::SP_FileLinkIcon:
      return u"bestand"_s;
    default:
      return {};
  }
}

}  // namespace desktop::look
