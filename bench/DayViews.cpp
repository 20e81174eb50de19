// SPDX-License-Identifier: MIT
#include "bench/DayViews.h"

#include "bench/Plain.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "catalogue/frmOntbreekt.h"
#include "catalogue/frmWeek.h"
#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/forms/DroppedAudio.h"
#include "data/forms/Screens.h"
#include "items/frmItemsDetailOpt1.h"
#include "platform/audio/Synth.h"
#include "platform/controls/DateCombo.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

constexpr int kMarked = 20;
constexpr int kDropped = 30;
// So few that the background work of each ends before the next one, as between two actions of a user.
constexpr int kFewRepeats = 5;
constexpr int kUntilUndo = 1500;  // ms; the states of the list are known by then

void Press(const QWidget& form, const QString& button) {
  form.findChild<QPushButton*>(button)->click();
}

template <class Form>
std::shared_ptr<Form> Shown() {
  auto form = std::make_shared<Form>(nullptr);
  form->show();
  form->Form_Load();
  Paint(*form);
  return form;
}

template <class Form>
controls::ListBox& ListOf(const Form& form, const QString& name = u"lstOverzicht"_s) {
  return *form.template findChild<controls::ListBox*>(name);
}

int CountOf(const QString& table, const QString& condition) {
  return dao::OpenDatabase(CurrentCatalogue().databasePath)
      .OpenRecordset(u"SELECT ID FROM %1 WHERE %2"_s.arg(table, condition))
      .RecordCount();
}

void Remove(const QString& table, const QString& condition) {
  dao::OpenDatabase(CurrentCatalogue().databasePath).Execute(u"DELETE FROM %1 WHERE %2"_s.arg(table, condition));
}

// Uses the next modal window as soon as it is shown.
class Answer {
 public:
  explicit Answer(std::function<void(QWidget&)> use) {
    QObject::connect(&timer_, &QTimer::timeout, [this, use = std::move(use)] {
      QWidget* window = QApplication::activeModalWidget();
      if (window == nullptr) return;
      timer_.stop();
      use(*window);
    });
    timer_.start(0);
  }

 private:
  QTimer timer_;
};

void Views(DaySteps& steps, const SlowDisk& disk) {
  DaySteps::Step week{"day-week", "opening the week", 0, 100, kFewRepeats};
  week.done = [](const QWidget& form) {
    const auto& day = ListOf(form, u"lstDag"_s);
    return dynamic_cast<const frmWeek&>(form).IsPlanned() && day.ListCount() > 0 && !day.Text(0).isEmpty();
  };
  steps.Run(disk, week, [](int) { return Shown<frmWeek>(); });
  DaySteps::Step missing{"day-missing", "opening the missing files", 0, 100, kFewRepeats};
  missing.done = [](const QWidget& form) { return dynamic_cast<const frmOntbreekt&>(form).IsFinished(); };
  steps.Run(disk, missing, [](int) { return Shown<frmOntbreekt>(); });
}

// The dialog that adds spots to an item, and a letter of a search in it.
void Choice(DaySteps& steps, const SlowDisk& disk) {
  controls::ListBox list;
  const auto open = [&list] {
    auto form = std::make_shared<frmItemsDetailOpt1>(nullptr, list);
    global.gstrSelectedID = QString::fromUtf16(kNewRecord);
    form->show();
    form->Form_Load();
    Paint(*form);
    return form;
  };
  DaySteps::Step choice{"day-choice", "choosing spots for an item", 0, 100, kFewRepeats};
  choice.done = [](const QWidget& dialog) {
    const auto* model = dialog.findChild<QTreeView*>(u"lstMeerdere"_s)->model();
    return !model->index(0, 1).data().toString().isEmpty();
  };
  steps.Run(disk, choice, [&](int) { return open(); });
  const auto form = open();
  auto& field = *form->findChild<QLineEdit*>(u"txtZoek"_s);
  const QString word = u"tuincentrum van damme 77"_s;
  steps.Run(disk, {"day-choice-search", "a letter of a search there"}, [&](int i) -> DaySteps::Window {
    field.setText(word.left(1 + i % word.size()));
    Paint(*form);
    return form;
  });
}

// Every write is followed by a refill of the list.
void EndDates(DaySteps& steps, const SlowDisk& disk) {
  DaySteps::Step step{"day-enddates", "an end date for 20 spots", kMarked, 200, kFewRepeats};
  const auto list = Shown<frmItemSpots>();
  QDate day(2099, 1, 1);
  steps.Run(
      disk, step,
      [&](int) -> DaySteps::Window {
        const Answer answer([&](QWidget& dialog) {
          dialog.findChild<controls::DateCombo*>(u"cobStop"_s)->SetDate(day);
          Press(dialog, u"cmdOk"_s);
        });
        Press(*list, u"cmdEinddatum"_s);
        Paint(*list);
        return list;
      },
      [&](int) {
        day = day.addDays(1);
        auto& lines = ListOf(*list);
        lines.selectionModel()->select({lines.model()->index(0, 0), lines.model()->index(kMarked - 1, 0)},
                                       QItemSelectionModel::ClearAndSelect);
      });
  Require(CountOf(u"tblItemSpots"_s, u"EindDatum = "_s + QString::number(QDate(1899, 12, 30).daysTo(day))) == kMarked,
          "the end dates are saved");
}

template <class List>
void Copies(DaySteps& steps, const SlowDisk& disk, const DaySteps::Step& step, const QString& table) {
  const auto list = Shown<List>();
  const int before = CountOf(table, u"ID > 0"_s);
  steps.Run(
      disk, step,
      [&](int) -> DaySteps::Window {
        Press(*list, u"cmdDupliceren"_s);
        Paint(*list);
        return list;
      },
      [&](int) { ListOf(*list).SetListIndex(0); });
  Require(CountOf(table, u"ID > 0"_s) == before + step.repeats, "the copies are saved");
  Remove(table, u"ID > "_s + QString::number(before));
}

void Wait(qint64 ms) {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < ms)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

void Undo(DaySteps& steps, const SlowDisk& disk) {
  const auto list = Shown<frmItemSpots>();
  const auto press = [&list](const QString& button) {
    return [&list, button](int) -> DaySteps::Window {
      Press(*list, button);
      Paint(*list);
      return list;
    };
  };
  const DaySteps::Step step{"day-undo", "making a spot active again", 1, 200, kFewRepeats};
  steps.Run(disk, step, press(u"cmdOngedaan"_s), [&](int) {
    ListOf(*list).SetListIndex(0);
    Press(*list, u"cmdDesaktiveer"_s);
    Wait(kUntilUndo);
  });
  Require(CountOf(u"tblItemSpots"_s, u"Aktief = 0"_s) == 0, "the spots are active");
}

// Each file is a statement and a line in the list of paths.
void Drop(DaySteps& steps, const SlowDisk& disk) {
  const QTemporaryDir folder;
  const int before = CountOf(u"tblItemSpots"_s, u"ID > 0"_s);
  QStringList files;
  const DaySteps::Step step{"day-drop", "saving 30 dropped files", 2 * kDropped, 1500, kFewRepeats};
  steps.Run(
      disk, step,
      [&](int) -> DaySteps::Window {
        const Answer answer([](QWidget& editor) {
          editor.findChild<controls::DateCombo*>(u"cobStop"_s)->SetDate(QDate(2099, 1, 1));
          Press(editor, u"cmdRest"_s);
        });
        QueueDroppedAudio(files);
        global.gstrSelectedID = QString::fromUtf16(kNewRecord);
        ShowScreen(Screen::ItemSpotsDetail, nullptr);
        return {};
      },
      [&](int repeat) {
        files.clear();
        for (int file = 0; file < kDropped; ++file) {
          files += folder.filePath(u"gesleept %1-%2.mp3"_s.arg(repeat).arg(file));
          audio::WriteToneFile(files.back().toStdString(), {});
        }
      });
  Require(CountOf(u"tblItemSpots"_s, u"ID > 0"_s) == before + kDropped * kFewRepeats, "the dropped files are saved");
  Remove(u"tblItemSpots"_s, u"ID > "_s + QString::number(before));
}

}  // namespace

void RunDayViews(DaySteps& steps, const SlowDisk& disk) {
  Views(steps, disk);
  Choice(steps, disk);
  EndDates(steps, disk);
  Copies<frmItemSpots>(steps, disk, {"day-copy", "a copy of a spot", 2, 200, kFewRepeats}, u"tblItemSpots"_s);
  Copies<frmItems>(steps, disk, {"day-item-copy", "a copy of an item of 20 spots", 2 + 20, 100, kFewRepeats},
                   u"tblItems"_s);
  Remove(u"tblItemsItemSpots"_s, u"ItemID > 1"_s);
  Undo(steps, disk);
  Drop(steps, disk);
}

}  // namespace bench
