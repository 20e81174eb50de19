// SPDX-License-Identifier: MIT
#include "export/ExportChecks.h"

#include "data/Globals.h"
#include "data/MessageNumbers.h"
#include "data/Messages.h"
#include "data/Text.h"
#include "platform/runtime/TextFile.h"

using namespace Qt::StringLiterals;

namespace {

bool ConfirmEarlierExports() {
  if (ShowItemsMessage(EarlierExportsQuestion(), kStyleYesNo) == kAnswerYes) return true;
  runtime::ShowUserMessage(
      u"Om data-verlies te vermijden, dient U eerst de vorige export-files te verwerken met Kadrovia !"_s,
      kStyleExclamation, u"Items"_s);
  return false;
}

}  // namespace

QString EarlierExportsQuestion() {
  return u"Heeft U de vorige export-files reeds verwerkt met Kadrovia ?"_s;
}

bool MayExport(const QString& destination) {
  if (!global.online && !ConfirmEarlierExports()) return false;
  if (IsKull(destination)) {
    ShowAppMessage(message::kFieldEmpty, u"Bestemming"_s);
    return false;
  }
  if (!runtime::IsFolder(destination)) {
    ShowAppMessage(message::kFolderMissing, u"Bestemming"_s);
    return false;
  }
  return true;
}
