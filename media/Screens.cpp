// SPDX-License-Identifier: MIT
#include "media/Screens.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/forms/DroppedAudio.h"
#include "data/forms/Screens.h"
#include "media/SpotSeries.h"
#include "media/frmBeluisteren.h"
#include "media/frmItemPinglesDetail.h"
#include "media/frmItemSpotsDetail.h"

#include <QProgressDialog>

using namespace Qt::StringLiterals;

namespace {

// After a record that was not saved, ask whether to continue with the other files.
bool AskToContinue() {
  const qsizetype left = DroppedAudioLeft();
  const QString waiting =
      left == 1 ? u"Er wacht nog één geluidsbestand."_s : u"Er wachten nog %1 geluidsbestanden."_s.arg(left);
  return ShowItemsMessage(waiting + u"\r\nVerdergaan met het volgende?"_s, kStyleYesNo) == kAnswerYes;
}

// Saves the next file with the times of the last spot, without its editor. False when the user has to look at it.
template <class Editor>
bool IsSavedWithRest(Editor& editor, QProgressDialog& progress) {
  if constexpr (requires { editor.SaveLikeLast(); }) {
    if (!SavesRest()) return false;
    progress.setMaximum(progress.value() + 1 + static_cast<int>(DroppedAudioLeft()));
    SetSavesRest(!progress.wasCanceled() && editor.SaveLikeLast());
    progress.setValue(progress.value() + 1);
    return SavesRest();
  }
  return false;
}

// Shows an editor, then one for each queued file.
template <class Editor>
void ShowEditors(QWidget* owner) {
  SetSavesRest(false);
  QProgressDialog progress(u"Item-spots bewaren ..."_s, u"Stoppen"_s, 0, 0, owner);
  progress.reset();
  progress.setWindowModality(Qt::WindowModal);
  progress.setMinimumDuration(1000);
  bool more = true;
  while (more) {
    Editor editor(owner);
    editor.Form_Load();
    if (!IsSavedWithRest(editor, progress)) {
      progress.reset();
      editor.ShowLoaded();
    }
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
