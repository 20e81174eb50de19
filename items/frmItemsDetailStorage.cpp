// What the item editor reads, checks and writes.
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Messages.h"
#include "data/Text.h"
#include "data/Writes.h"
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/dao/Database.h"
#include "platform/desktop/Trapped.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;
using desktop::Trapped;

namespace {

constexpr qint32 kNoSpot = -10000;
constexpr int kLongestName = 50;
constexpr int kLongestDirectory = 240;
constexpr int kLongestExtension = 3;

dao::Recordset ItemByID(const Catalogue& catalogue, qint32 id) {
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  return database.OpenRecordset(u"SELECT "_s + catalogue.items + u".* From " + catalogue.items + u" WHERE " +
                                catalogue.items + u".ID = " + QString::number(id));
}

// The ItemData of the chosen entry; nothing when none is chosen.
std::optional<qint32> Chosen(const controls::ComboBox& combo) {
  if (combo.ListIndex() == -1) return std::nullopt;
  return static_cast<qint32>(combo.ItemData(combo.ListIndex()));
}

void AddNumbered(controls::ComboBox& combo, const QStringList& texts) {
  combo.Clear();
  for (int i = 0; i < texts.size(); ++i) combo.AddItem(texts[i], i + 1);
}

}  // namespace

void frmItemsDetail::FillCboOpt2VariabelNaamGedeelte() {
  Trapped(__func__, [this] {
    AddNumbered(*ui_->cboOpt2VariabelNaamGedeelte, {u"ddmmyyyy"_s, u"ddmmyyyyhh"_s, u"ww"_s, u"mm"_s});
  });
}

void frmItemsDetail::FillCboOpt2Eerstedagvanweek() {
  Trapped(__func__, [this] {
    AddNumbered(*ui_->cboOpt2Eerstedagvanweek, {u"Zondag"_s, u"Maandag"_s, u"Dinsdag"_s, u"Woensdag"_s, u"Donderdag"_s,
                                                u"Vrijdag"_s, u"Zaterdag"_s});
  });
}

void frmItemsDetail::FillCboPingles() {
  Trapped(__func__, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows =
        database.OpenRecordset(u"SELECT ID, Naam AS Code FROM "_s + catalogue.itemPingles + u" ORDER BY Naam");
    std::vector<controls::ComboBox::Line> lines;
    for (; !rows.Eof(); rows.MoveNext()) {
      lines.push_back({rows.Field(u"Code"_s).toString(), rows.Field(u"ID"_s).toLongLong()});
    }
    for (controls::ComboBox* combo : {ui_->cboOpenerPingle, ui_->cboMiddenPingle, ui_->cboSluiterPingle}) {
      combo->Refill(lines);
    }
  });
}

void frmItemsDetail::FillForm() {
  Trapped(__func__, [this] {
    if (isNew_) {
      ui_->chkAktief->setChecked(true);
      ui_->opt1->setChecked(true);
      ui_->opt1Spot->setChecked(true);
    } else {
      const dao::Recordset row = ItemByID(CurrentCatalogue(), id_);
      if (!(row.Bof() && row.Eof())) FillFields(row);
    }
    isDirty_ = false;
  });
}

void frmItemsDetail::FillFields(const dao::Recordset& row) {
  const QVariant naam = row.Field(u"Naam"_s);
  if (!naam.isNull()) ui_->txtNaam->setText(naam.toString());
  const QVariant aktief = row.Field(u"Aktief"_s);
  if (!aktief.isNull()) ui_->chkAktief->setChecked(runtime::ToLong(aktief) != 0);
  const QVariant locked = row.Field(u"Locked"_s);
  if (!locked.isNull()) locked_ = runtime::ToLong(locked);
  isLocked_ = locked_ != 0;
  FillFilling(row);
  const QVariant several = row.Field(u"OptMeerdereSpots"_s);
  if (!several.isNull()) (runtime::ToLong(several) != 0 ? ui_->optMeerdereSpots : ui_->opt1Spot)->setChecked(true);
  const QVariant count = row.Field(u"AantalSpots"_s);
  if (!count.isNull()) ui_->txtAantalSpots->setText(count.toString());
  const QVariant most = row.Field(u"MaxAantalSpots"_s);
  if (!most.isNull()) ui_->txtMaxAantalSpots->setText(most.toString());
  const QVariant random = row.Field(u"ChkRandomizeMeerdereSpots"_s);
  if (!random.isNull()) ui_->chkRandomizeMeerdereSpots->setChecked(runtime::ToLong(random) != 0);
  FillJingle(row.Field(u"Opener"_s), u"cboOpenerPingle"_s, *ui_->chkOpenerPingle);
  FillJingle(row.Field(u"Midden"_s), u"cboMiddenPingle"_s, *ui_->chkMiddenPingle);
  FillJingle(row.Field(u"Sluiter"_s), u"cboSluiterPingle"_s, *ui_->chkSluiterPingle);
}

void frmItemsDetail::FillFilling(const dao::Recordset& row) {
  const QVariant option = row.Field(u"ItemSpotsOptID"_s);
  if (option.isNull()) return;
  if (runtime::ToLong(option) == 1) {
    ui_->opt1->setChecked(true);
    FillFraItemSpots();
    return;
  }
  if (runtime::ToLong(option) != 2) return;
  ui_->opt2->setChecked(true);
  const auto fillText = [&row](const QString& field, QLineEdit* box) {
    if (const QVariant value = row.Field(field); !value.isNull()) box->setText(value.toString());
  };
  fillText(u"Opt2Directory"_s, ui_->txtOpt2Directory);
  fillText(u"Opt2VastNaamGedeelte"_s, ui_->txtOpt2VastNaamGedeelte);
  fillText(u"Opt2FileExtensie"_s, ui_->txtOpt2FileExtensie);
  const auto select = [&](const QString& field, const QString& combo) {
    if (const QVariant value = row.Field(field); !value.isNull()) SetCboTextWhereID(combo, runtime::ToLong(value));
  };
  select(u"Opt2VariabelNaamGedeelte"_s, u"cboOpt2VariabelNaamGedeelte"_s);
  select(u"Opt2Eerstedagvanweek"_s, u"cboOpt2Eerstedagvanweek"_s);
  if (const QVariant mix = row.Field(u"Opt2MixPunt"_s); !mix.isNull()) {
    storedMix_ = runtime::ToLong(mix);
    ui_->ledMix->SetValue(storedMix_);
    shownMix_ = ui_->ledMix->Value();
  }
}

// The check box first: its combo is emptied and locked while it is not checked.
void frmItemsDetail::FillJingle(const QVariant& id, const QString& combo, QCheckBox& check) {
  if (id.isNull()) return;
  SetCboTextWhereID(combo, runtime::ToLong(id));
  if (findChild<controls::ComboBox*>(combo)->currentText().isEmpty()) return;
  check.setChecked(true);
}

void frmItemsDetail::FillFraItemSpots() {
  Trapped(__func__, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    const QString& link = catalogue.itemsItemSpots;
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows = database.OpenRecordset(u"SELECT "_s + link + u".ItemSpotOrder, " + link + u".ItemSpotID From " +
                                                 link + u" WHERE " + link + u".ItemID = " + QString::number(id_) +
                                                 u" ORDER BY " + link + u".ItemSpotOrder");
    for (; !rows.Eof(); rows.MoveNext()) {
      const QVariant spot = rows.Field(u"ItemSpotID"_s);
      const qint32 spotID = runtime::IsNumeric(spot) ? runtime::ToLong(spot) : kNoSpot;
      const QString naam = GetItemSpotID_Naam(spotID, catalogue.databasePath, catalogue.itemSpots);
      if (!naam.isEmpty() && spotID != kNoSpot) ui_->lstOpt1ItemSpots->AddItem(naam, spotID);
    }
  });
}

bool frmItemsDetail::IsDuplicateCode() {
  return Trapped(__func__, false, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    return NameExists(catalogue.databasePath, catalogue.items, ui_->txtNaam->text(), isNew_, id_);
  });
}

bool frmItemsDetail::Refuse(int message, const QString& value1, const QString& value2, QWidget* focus) {
  ShowAppMessage(message, value1, value2);
  if (focus != nullptr) focus->setFocus();
  return false;
}

bool frmItemsDetail::FilledWithin(const QString& text, const QString& label, int longest, QWidget* focus) {
  if (IsKull(text)) return Refuse(1500, label, {}, focus);
  if (text.size() > longest) return Refuse(1506, label, QString::number(longest), focus);
  return true;
}

bool frmItemsDetail::OpslaanProceed() {
  return Trapped(__func__, false, [this] {
    const QString naam = ui_->txtNaam->text();
    if (!FilledWithin(naam, u"Item-naam"_s, kLongestName, ui_->txtNaam)) return false;
    if (IsDuplicateCode()) return Refuse(1600, runtime::TrimBlanks(naam), u"Item-naam"_s, ui_->txtNaam);
    if (ui_->opt1->isChecked() && ui_->lstOpt1ItemSpots->ListCount() == 0) return Refuse(5005, {}, {}, nullptr);
    if (ui_->opt2->isChecked() && !PatternProceed()) return false;
    return !ui_->optMeerdereSpots->isChecked() || SeveralSpotsProceed();
  });
}

bool frmItemsDetail::PatternProceed() {
  if (!FilledWithin(ui_->txtOpt2Directory->text(), u"Directory"_s, kLongestDirectory, ui_->txtOpt2Directory)) return false;
  if (!FilledWithin(ui_->txtOpt2VastNaamGedeelte->text(), u"Vast Naam-gedeelte"_s, kLongestName,
                    ui_->txtOpt2VastNaamGedeelte)) {
    return false;
  }
  if (ui_->cboOpt2VariabelNaamGedeelte->ListIndex() == -1) {
    return Refuse(1501, u"Variabel Naam-gedeelte"_s, u"format"_s, ui_->cboOpt2VariabelNaamGedeelte);
  }
  return FilledWithin(ui_->txtOpt2FileExtensie->text(), u"File-extensie"_s, kLongestExtension, ui_->txtOpt2FileExtensie);
}

bool frmItemsDetail::SeveralSpotsProceed() {
  const QString count = ui_->txtAantalSpots->text();
  const QString most = ui_->txtMaxAantalSpots->text();
  if (!runtime::IsNumeric(count)) return Refuse(3028, u"Aantal spots"_s, {}, ui_->txtAantalSpots);
  if (!runtime::IsNumeric(most)) return Refuse(3028, u"Maximum aantal spots"_s, {}, ui_->txtMaxAantalSpots);
  if (runtime::ToLong(count) < 1) return Refuse(5107, u"0"_s, {}, ui_->txtAantalSpots);
  if (runtime::ToLong(count) > runtime::ToLong(most)) return Refuse(5106, {}, {}, ui_->txtAantalSpots);
  return true;
}

void frmItemsDetail::ReadPattern(ItemRow& row) const {
  row.opt2Directory = runtime::TrimBlanks(ui_->txtOpt2Directory->text());
  row.opt2VastNaamGedeelte = runtime::TrimBlanks(ui_->txtOpt2VastNaamGedeelte->text());
  row.opt2VariabelNaamGedeelte = Chosen(*ui_->cboOpt2VariabelNaamGedeelte).value_or(0);
  row.opt2FormatGedeelte = runtime::TrimBlanks(ui_->cboOpt2VariabelNaamGedeelte->currentText());
  row.opt2Eerstedagvanweek = Chosen(*ui_->cboOpt2Eerstedagvanweek).value_or(0);
  row.opt2FileExtensie = runtime::TrimBlanks(ui_->txtOpt2FileExtensie->text());
  // A stored value that the panel cannot show is kept unless the user changed it.
  row.opt2MixPunt = ui_->ledMix->Value() == shownMix_ ? storedMix_ : ui_->ledMix->Value();
}

ItemRow frmItemsDetail::ValuesOnScreen() const {
  ItemRow row;
  row.id = id_;
  row.naam = runtime::TrimBlanks(ui_->txtNaam->text());
  row.aktief = ui_->chkAktief->isChecked() ? 1 : 0;
  row.locked = locked_;
  row.itemSpotsOptID = ui_->opt2->isChecked() ? 2 : ui_->opt1->isChecked() ? 1 : 0;
  if (row.itemSpotsOptID == 2) ReadPattern(row);
  if (ui_->optMeerdereSpots->isChecked()) {
    row.optMeerdereSpots = -1;
    row.aantalSpots = runtime::ToLong(ui_->txtAantalSpots->text());
    row.maxAantalSpots = runtime::ToLong(ui_->txtMaxAantalSpots->text());
    row.chkRandomizeMeerdereSpots = ui_->chkRandomizeMeerdereSpots->isChecked() ? 1 : 0;
  }
  row.opener = Chosen(*ui_->cboOpenerPingle);
  row.midden = Chosen(*ui_->cboMiddenPingle);
  row.sluiter = Chosen(*ui_->cboSluiterPingle);
  return row;
}

void frmItemsDetail::RequireStillThere(const Catalogue& catalogue) const {
  if (!isNew_ && ItemByID(catalogue, id_).Eof()) {
    throw runtime::Error(u"Dit item is intussen door iemand anders verwijderd. Er is niets bewaard."_s);
  }
}

void frmItemsDetail::Opslaan() {
  isDirty_ = true;  // until everything is written
  Trapped(__func__, [this] {
    if (isLocked_) return;
    const Catalogue catalogue = CurrentCatalogue();
    const desktop::WaitPointer wait;
    RequireStillThere(catalogue);
    if (isNew_) {
      id_ = GetNewID(catalogue.items, catalogue.items + u".ID", catalogue.databasePath);
      if (id_ == 0) return;
    }
    const ItemRow row = ValuesOnScreen();
    global.lastResult = isNew_ ? Insert_tblItems(row, catalogue.databasePath, catalogue.items)
                               : Update_tblItems(row, catalogue.databasePath, catalogue.items);
    if (!global.lastResult) return;
    isNew_ = false;
    if (WriteLinks(catalogue)) isDirty_ = false;
  });
}

bool frmItemsDetail::WriteLinks(const Catalogue& catalogue) const {
  const QString& link = catalogue.itemsItemSpots;
  global.lastResult = Delete_tblBeheer(id_, link, link + u".ItemID", catalogue.databasePath);
  if (!global.lastResult || !ui_->opt1->isChecked()) return global.lastResult;
  for (int line = 0; line < ui_->lstOpt1ItemSpots->ListCount(); ++line) {
    const auto spot = static_cast<qint32>(ui_->lstOpt1ItemSpots->ItemData(line));
    global.lastResult = Insert_tblItemsItemSpots({id_, line + 1, spot}, catalogue.databasePath, link);
    if (!global.lastResult) return false;
  }
  return true;
}
