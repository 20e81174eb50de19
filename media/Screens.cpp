// SPDX-License-Identifier: MIT
#include "media/Screens.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/forms/DroppedAudio.h"
#include "data/forms/Screens.h"
#include "media/frmBeluisteren.h"
#include "media/frmItemPinglesDetail.h"
#include "media/frmItemSpotsDetail.h"

using namespace Qt::StringLiterals;

namespace {

// After a record that was not saved, ask whether to continue with the other files.
bool AskToContinue() {
  const qsizetype left = DroppedAudioLeft();
  const QString waiting =
      left == 1 ? u"Er wacht nog één geluidsbestand."_s : u"Er wachten nog %1 geluidsbestanden."_s.arg(left);
  return ShowItemsMessage(waiting + u"\r\nVerdergaan met het volgende?"_s, kStyleYesNo) == kAnswerYes;
}

// Shows an editor, then one for each queued file.
template <class Editor>
void ShowEditors(QWidget* owner) {
  bool more = true;
  while (more) {
    Editor editor(owner);
    editor.ShowModal();
    more = DroppedAudioLeft() > 0 && (!editor.IsNew() || AskToContinue());
    if (more) global.gstrSelectedID = QString::fromUtf16(kNewRecord);
  }
}

}  // namespace

void RegisterMediaScreens() {
  RegisterScreen(Screen::Beluisteren, [](QWidget* owner) { frmBeluisteren(owner).ShowModal(); });
  RegisterScreen(Screen::ItemSpotsDetail, ShowEditors<frmItemSpotsDetail>);
  RegisterScreen(Screen::ItemPinglesDetail, ShowEditors<frmItemPinglesDetail>);
}
