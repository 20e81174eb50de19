// SPDX-License-Identifier: MIT
#include "catalogue/frmItemPingles.h"

#include "catalogue/LocalCopy.h"
#include "data/Globals.h"
#include "data/MessageNumbers.h"
#include "data/Messages.h"
#include "data/Usage.h"
#include "data/Writes.h"
#include "data/forms/SpotDetails.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItemPingles.h"

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmItemPingles::frmItemPingles(QWidget* owner)
    : OverviewForm(owner, RecordKind::ItemPingle, u"item-pingle"_s, u"item-pingles"_s, Screen::ItemPinglesDetail),
      ui_(std::make_unique<Ui::frmItemPingles>()),
      usage_(this),
      reading_(this) {
  ui_->setupUi(this);
  Wire(*ui_);
  AcceptAudio();
}

frmItemPingles::~frmItemPingles() = default;

void frmItemPingles::InitCommands() {
  OverviewForm::InitCommands();
  Trapped(__func__, [&] { ShowUsage(); });
}

// Where the selected jingle is used, read in the background.
void frmItemPingles::ShowUsage() {
  ui_->lblGebruik->setText({});
  usage_.Cancel();
  if (List().ListIndex() == -1) return;
  usage_.Send([this, id = SelectedID(), catalogue = CurrentCatalogue()](const LatestTask::Token& token) {
    QString text;
    try {
      text = UsageText(ItemsWithPingle(id, catalogue));
    } catch (const runtime::Error&) {
      text = u"Waar de jingle gebruikt wordt, is nu niet te lezen."_s;
    }
    token.Post([this, text] { ui_->lblGebruik->setText(text); });
  });
}

void frmItemPingles::cmdVerwijder_Click() {
  Trapped(__func__, [&] {
    const QString name = runtime::TrimBlanks(List().Text(List().ListIndex()));
    const QString question = u'"' + name + u'"' + u" verwijderen uit de lijst ..."_s + u"\r\n"_s;
    if (ShowAppMessage(message::kAreYouSure, question) == kAnswerYes) {
      const desktop::WaitPointer wait;
      const Catalogue catalogue = CurrentCatalogue();
      global.lastResult = Delete_tblBeheer(SelectedID(), catalogue.itemPingles, catalogue.itemPingles + u".ID"_s,
                                           catalogue.databasePath);
    }
    Refill();
  });
}

void frmItemPingles::Form_Unload() {
  Trapped(__func__, [&] {
    if (global.online) RefreshLocalCopies({{u"tblCopie_ItemPingles"_s, TransItemPinglesToLocal}});
  });
}

// Paths and lengths, in the background. Without them the list is complete: an error is not shown.
void frmItemPingles::OnRefilled() {
  read_ = false;
  reading_.Send([this, catalogue = CurrentCatalogue()](const LatestTask::Token& token) {
    try {
      token.Post([this, sounds = ReadSounds(catalogue)]() mutable { ShowSounds(std::move(sounds)); });
    } catch (const runtime::Error&) {
    }
  });
  constexpr std::chrono::milliseconds kBeforeTheFirstPaint{8};
  reading_.WaitFor(kBeforeTheFirstPaint);
}

QHash<qint64, frmItemPingles::Sound> frmItemPingles::ReadSounds(const Catalogue& catalogue) {
  const QString& table = catalogue.itemPingles;
  dao::Recordset rows =
      dao::OpenDatabase(catalogue.databasePath, {.readOnly = true})
          .OpenRecordset(u"SELECT "_s + table + u".ID, " + table + u".Path, " + table + u".LengteSec From " + table);
  QHash<qint64, Sound> sounds;
  for (; !rows.Eof(); rows.MoveNext()) {
    Sound sound{runtime::TrimBlanks(rows.Field(1).toString()), {}};
    if (const QVariant length = rows.Field(2); runtime::IsNumeric(length)) sound.lengteSec = runtime::ToLong(length);
    sounds.insert(rows.Field(0).toLongLong(), sound);
  }
  return sounds;
}

void frmItemPingles::ShowSounds(QHash<qint64, Sound> sounds) {
  sounds_ = std::move(sounds);
  read_ = true;
  for (int line = 0; line < List().ListCount(); ++line) {
    const auto sound = sounds_.constFind(List().ItemData(line));
    if (sound == sounds_.constEnd()) continue;
    controls::LineDetails details;
    details.trailing = LengthText(sound->lengteSec);
    details.toolTip = details.searched = sound->path;
    List().SetDetails(line, details);
  }
  Sort();
  if (!View().search.isEmpty()) List().Refilter();
  ShowCount();
}

controls::ColumnTexts frmItemPingles::Captions() const {
  return {u"Naam"_s, {}, {}, u"Lengte"_s};
}

std::vector<qint64> frmItemPingles::SortKeys(controls::LineColumn) const {
  if (!read_) return {};
  std::vector<qint64> keys(static_cast<std::size_t>(List().ListCount()), controls::ListBox::kNoKey);
  for (std::size_t line = 0; line < keys.size(); ++line) {
    const auto sound = sounds_.constFind(List().ItemData(static_cast<int>(line)));
    if (sound != sounds_.constEnd() && sound->lengteSec) keys[line] = *sound->lengteSec;
  }
  return keys;
}
