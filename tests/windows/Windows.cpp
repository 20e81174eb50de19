// SPDX-License-Identifier: MIT
#include "tests/windows/Windows.h"

#include "app/frmEersteStart.h"
#include "app/frmHandleiding.h"
#include "app/frmMain.h"
#include "app/frmNieuweZender.h"
#include "app/frmReservekopieen.h"
#include "app/frmSplash.h"
#include "app/frmVersie.h"
#include "catalogue/frmGeldigheid.h"
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "catalogue/frmOntbreekt.h"
#include "catalogue/frmWeek.h"
#include "data/Catalogue.h"
#include "data/Globals.h"
#include "export/frmDefaults.h"
#include "export/frmExportsVerwerken.h"
#include "export/frmOfflineLog.h"
#include "export/frmPlanningExporteren.h"
#include "export/frmRadioDetail.h"
#include "export/playout/BlockReader.h"
#include "export/playout/BlockToHear.h"
#include "export/reports/frmOverzichten.h"
#include "items/frmDirectory.h"
#include "items/frmItemsDetail.h"
#include "items/frmItemsDetailOpt1.h"
#include "media/frmBeluisteren.h"
#include "media/frmItemPinglesDetail.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/InputDialog.h"
#include "platform/desktop/MessageDialog.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

namespace windows {
namespace {

template <class Shown>
Opening Screen(const QString& name, const QString& selected = {}) {
  return {name, [selected] {
            global.gstrSelectedID = selected;
            global.gstrOpruimenID = selected;
            auto form = std::make_unique<Shown>(nullptr);
            form->Form_Load();
            return Window(std::move(form));
          }};
}

// Selects a line, so that its buttons are enabled.
template <class List>
Opening Overview(const QString& name) {
  return {name, [] {
            auto form = std::make_unique<List>(nullptr);
            form->Form_Load();
            form->template findChild<controls::ListBox*>(u"lstOverzicht"_s)->SetListIndex(0);
            return Window(std::move(form));
          }};
}

Window Validity(frmGeldigheid::Part part) {
  auto form = std::make_unique<frmGeldigheid>(nullptr, part, u"20 item-spots"_s);
  form->Form_Load();
  return Window(std::move(form));
}

// The list must outlive the dialog that uses it.
Window SpotEntry() {
  auto list = std::make_shared<controls::ListBox>();
  auto form = std::make_unique<frmItemsDetailOpt1>(nullptr, *list);
  global.gstrSelectedID = QString::fromUtf16(kNewRecord);
  form->Form_Load();
  return Window(std::move(form), list);
}

Window Folders() {
  global.gstrSelectedID = global.exportPath;
  auto form = std::make_unique<frmDirectory>(nullptr);
  form->Form_Load();
  return Window(std::move(form));
}

Window Question() {
  return Window(std::make_unique<desktop::MessageDialog>(
      nullptr, u"De gegevens zijn gewijzigd.\r\nWilt u de wijzigingen bewaren?"_s, 35, u"Items"_s));
}

Window InputBox() {
  return Window(
      std::make_unique<desktop::InputDialog>(nullptr, u"Geef een numerische waarde ..."_s, u"Items"_s, u"2480"_s));
}

// After its files are checked.
Window Listening(qint32 item) {
  SetBlockToHear(ReadBlock(CurrentCatalogue(), item));
  auto form = std::make_unique<frmBeluisteren>(nullptr);
  form->Form_Load();
  const QDeadlineTimer patience(30000);
  while (!form->IsPlanned() && !patience.hasExpired())
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
  return Window(std::move(form));
}

// As soon as its background reading has ended.
template <class Shown>
Opening Planned(const QString& name, bool (Shown::*isDone)() const) {
  return {name, [isDone] {
            auto form = std::make_unique<Shown>(nullptr);
            form->Form_Load();
            const QDeadlineTimer patience(30000);
            while (!((*form).*isDone)() && !patience.hasExpired())
              QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            return Window(std::move(form));
          }};
}

QString Text(qint32 id) {
  return QString::number(id);
}

}  // namespace

// The main window after its load; not loaded here, since that asks for the station first.
QList<Opening> All(const Records& records) {
  return {
      {u"splash"_s, [] { return Window(std::make_unique<frmSplash>()); }},
      {u"main"_s, [] { return Window(std::make_unique<frmMain>()); }},
      Screen<frmEersteStart>(u"firstStart"_s),
      Screen<frmNieuweZender>(u"newStation"_s),
      Screen<frmHandleiding>(u"handleiding"_s),
      Screen<frmRadioDetail>(u"station"_s),
      Screen<frmVersie>(u"version"_s),
      Overview<frmItems>(u"items"_s),
      Overview<frmItemSpots>(u"itemSpots"_s),
      Overview<frmItemPingles>(u"itemPingles"_s),
      Screen<frmItemsDetail>(u"itemOption1"_s, Text(records.itemOption1)),
      Screen<frmItemsDetail>(u"itemOption2"_s, Text(records.itemOption2)),
      {u"itemSpotEntry"_s, SpotEntry},
      {u"folder"_s, Folders},
      {u"lastDay"_s, [] { return Validity(frmGeldigheid::Part::EindDatum); }},
      {u"hours"_s, [] { return Validity(frmGeldigheid::Part::Uren); }},
      Screen<frmItemSpotsDetail>(u"itemSpot"_s, Text(records.itemSpot)),
      Screen<frmItemPinglesDetail>(u"itemPingle"_s, Text(records.itemPingle)),
      {u"listening"_s, [records] { return Listening(records.itemOption1); }},
      Screen<frmItemOpruimen>(u"itemCleanup"_s, Text(records.itemOption1)),
      Screen<frmItemSpotOpruimen>(u"itemSpotCleanup"_s, Text(records.itemSpot)),
      Screen<frmPlanningExporteren>(u"export"_s),
      Screen<frmDefaults>(u"settings"_s),
      Screen<frmOverzichten>(u"overviews"_s),
      Planned<frmWeek>(u"week"_s, &frmWeek::IsPlanned),
      Planned<frmOntbreekt>(u"missing"_s, &frmOntbreekt::IsFinished),
      Planned<frmExportsVerwerken>(u"apply"_s, &frmExportsVerwerken::IsRead),
      Planned<frmOfflineLog>(u"offlineLog"_s, &frmOfflineLog::IsRead),
      Planned<frmReservekopieen>(u"backups"_s, &frmReservekopieen::IsRead),
      {u"question"_s, Question},
      {u"input"_s, InputBox},
  };
}

}  // namespace windows
