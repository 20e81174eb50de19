// SPDX-License-Identifier: MIT
#include "tests/windows/DailyPictures.h"

#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "catalogue/frmOntbreekt.h"
#include "catalogue/frmWeek.h"
#include "data/forms/DroppedAudio.h"
#include "export/StationMemory.h"
#include "export/frmExportsVerwerken.h"
#include "export/frmPlanningExporteren.h"
#include "export/frmRadioDetail.h"
#include "items/frmItemsDetail.h"
#include "items/frmItemsDetailOpt1.h"
#include "media/SpotSeries.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/windows/Take.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QProgressDialog>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace windows {
namespace {

constexpr int kReading = 30000;  // ms; maximum for reading in the background

controls::ListBox& Overview(QWidget& form) {
  return In<controls::ListBox>(form, u"lstOverzicht"_s);
}

void MarkFive(QWidget& form) {
  auto& list = Overview(form);
  list.setFocus();
  for (int line = 0; line < 5; ++line)
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
}

void Press(QWidget& form, const QString& button) {
  In<QAbstractButton>(form, button).click();
}

// Several lines marked, a line that was just made, and a deactivation that can be undone.
void TakeMarked(const Album& album) {
  TakeForm<frmItemSpots>(album, u"itemSpots-gemarkeerd"_s, {}, MarkFive);
  TakeForm<frmItems>(album, u"items-gemarkeerd"_s, {}, MarkFive);
  TakeForm<frmItemPingles>(album, u"itemPingles-gemarkeerd"_s, {}, MarkFive);
  TakeForm<frmItemSpots>(album, u"itemSpots-bewaard"_s, {}, [](QWidget& form) {
    Overview(form).SetListIndex(4);
    Press(form, u"cmdDupliceren"_s);
  });
  TakeForm<frmItems>(album, u"items-ongedaan"_s, {}, [](QWidget& form) {
    Overview(form).SetListIndex(2);
    Press(form, u"cmdDesaktiveer"_s);
  });
  TakeForm<frmItemSpots>(album, u"itemSpots-slepen"_s, {}, [](QWidget& form) { Overview(form).SetDropTarget(true); });
  Change(u"DELETE FROM tblItemSpots WHERE ID > 60"_s);
  Change(u"UPDATE tblItems SET Aktief = 1"_s);
}

void TakeMenus(const Album& album) {
  const auto take = [&](const QString& name, const std::function<void(QWidget&)>& mark) {
    frmItemSpots form(nullptr);
    form.Form_Load();
    form.show();
    mark(form);
    album.TakeOpened(name, [&] {
      QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(60, 60), form.mapToGlobal(QPoint(60, 60)));
      QCoreApplication::sendEvent(&Overview(form), &asked);
    });
  };
  take(u"itemSpots-menu"_s, [](QWidget& form) { Overview(form).SetListIndex(2); });
  take(u"itemSpots-menu-gemarkeerd"_s, MarkFive);
}

void TakeSeries(const Album& album) {
  NoteSavedTimes({u"11-03-2025"_s, u"6"_s, u"30-04-2025"_s, u"22"_s, true});
  const QString folder = runtime::HostPath(u"D:\\audio\\Spots"_s);
  QueueDroppedAudio({folder + u"/Boekhandel Lezenswaard.wav"_s, folder + u"/b.mp3"_s, folder + u"/c.mp3"_s});
  TakeForm<frmItemSpotsDetail>(album, u"itemSpot-reeks"_s, QString::fromUtf16(kNewRecord));
  ForgetDroppedAudio();
}

void TakeUnsaved(const Album& album) {
  TakeForm<frmItemSpotsDetail>(album, u"itemSpot-vergroot"_s, u"7"_s, [](QWidget& form) {
    auto& strip = In<controls::WaveformStrip>(form, u"waveform"_s);
    QTest::qWait(500);
    QTest::keyClick(&strip, Qt::Key_Right);
    for (int times = 0; times < 3; ++times)
      QTest::keyClick(&strip, Qt::Key_Plus);
  });
  TakeForm<frmItemsDetail>(album, u"item-niet-bewaard"_s, u"1"_s, [](QWidget& form) {
    In<QLineEdit>(form, u"txtAantalSpots"_s).setText(u"2"_s);
    Press(form, u"chkRandomizeMeerdereSpots"_s);
  });
  TakeForm<frmItemsDetail>(album, u"item-lijst-terug"_s, u"1"_s, [](QWidget& form) {
    Press(form, u"opt2"_s);
    Press(form, u"opt1"_s);
  });
}

void TakeChoice(const Album& album) {
  controls::ListBox list;
  global.gstrSelectedID = QString::fromUtf16(kNewRecord);
  frmItemsDetailOpt1 form(nullptr, list);
  form.Form_Load();
  album.Take(u"itemSpotEntry-aangevinkt"_s, form, [&] {
    auto& choices = In<QTreeView>(form, u"lstMeerdere"_s);
    choices.setFocus();
    for (int line = 0; line < 4; ++line) {
      QTest::keyClick(&choices, Qt::Key_Down);
      QTest::keyClick(&choices, Qt::Key_Space);
    }
  });
}

// Files that are gone, and a block of which no spot runs.
void TakeProblems(const Album& album) {
  Change(u"UPDATE tblItemSpots SET Path = \"D:\\audio\\weg.mp3\" WHERE ID IN (1, 2, 3)"_s);
  Change(u"UPDATE tblItemSpots SET Path = \"Q:\\ver weg.mp3\" WHERE ID = 4"_s);
  Change(u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 3"_s);
  Change(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, Aktief, Locked) VALUES "
      u"(90, \"Blok zonder spots\", 1, 0, 1, 0)"_s);
  TakeForm<frmWeek>(album, u"week-stil"_s, {}, [](QWidget& form) {
    const auto& week = static_cast<const frmWeek&>(form);
    if (!QTest::qWaitFor([&] { return week.IsPlanned(); }, kReading)) throw runtime::Error(u"niets gepland"_s);
  });
  TakeForm<frmOntbreekt>(album, u"missing-veel"_s, {}, [](QWidget& form) {
    const auto& missing = static_cast<const frmOntbreekt&>(form);
    if (!QTest::qWaitFor([&] { return missing.IsFinished(); }, kReading)) throw runtime::Error(u"niets gezocht"_s);
    In<controls::ListBox>(form, u"lstOntbreekt"_s).SetListIndex(1);
  });
  Change(u"DELETE FROM tblItems WHERE ID = 90"_s);
}

void TakeLastStation(const Album& album) {
  const QTemporaryDir folder;
  const StationMemory memory(folder.filePath(u"zenders.ini"_s));
  StationMemory::Chosen(0);
  TakeForm<frmRadioDetail>(album, u"station-vorige"_s, {});
}

// Writing many lines, half-way.
void TakeProgress(const Album& album) {
  frmItemSpots form(nullptr);
  form.Form_Load();
  form.show();
  auto& list = Overview(form);
  list.setFocus();
  QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
  QTimer looking;
  QObject::connect(&looking, &QTimer::timeout, &form, [&] {
    auto* progress = form.findChild<QProgressDialog*>();
    if (progress == nullptr || 2 * progress->value() < progress->maximum()) return;
    looking.stop();
    album.Save(u"itemSpots-voortgang"_s, *progress);
  });
  looking.start(0);
  Press(form, u"cmdDesaktiveerAlle"_s);
  if (looking.isActive()) throw runtime::Error(u"geen voortgang"_s);
  Change(u"UPDATE tblItemSpots SET Aktief = 1"_s);
}

// An export before it is carried out, and the conflict after that.
void TakeApplied(const Album& album) {
  {
    const desktop::MessageBoxScript boxes;
    global.online = false;
    frmPlanningExporteren exporting(nullptr);
    exporting.Form_Load();
    exporting.show();
    Press(exporting, u"cmdOk"_s);
    global.online = true;
  }
  Change(u"UPDATE tblItemSpots SET Naam = \"Schouwburg De Kaai - nieuw seizoen\" WHERE ID = 12"_s);
  const auto read = [](QWidget& form) {
    const auto& applying = static_cast<const frmExportsVerwerken&>(form);
    if (!QTest::qWaitFor([&] { return applying.IsRead(); }, kReading)) throw runtime::Error(u"niets gelezen"_s);
    In<controls::ListBox>(form, u"lstBestanden"_s).SetListIndex(0);
  };
  TakeForm<frmExportsVerwerken>(album, u"apply-gevuld"_s, {}, read);
  TakeForm<frmExportsVerwerken>(album, u"apply-verwerkt"_s, {}, [&](QWidget& form) {
    read(form);
    Press(form, u"cmdVerwerken"_s);
  });
  TakeForm<frmExportsVerwerken>(album, u"apply-botsing"_s, {}, [&](QWidget& form) {
    read(form);
    In<QTabWidget>(form, u"tabVerwerken"_s).setCurrentIndex(1);
    In<controls::ListBox>(form, u"lstBotsingen"_s).SetListIndex(0);
  });
}

}  // namespace

void TakeDaily(const Album& album) {
  TakeMarked(album);
  TakeMenus(album);
  TakeSeries(album);
  TakeUnsaved(album);
  TakeChoice(album);
  TakeLastStation(album);
  TakeProblems(album);
  TakeProgress(album);
  TakeApplied(album);
}

}  // namespace windows
