// SPDX-License-Identifier: MIT
// The actions on several marked lines of a list, through its window.
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/forms/SavedRecords.h"
#include "platform/controls/DateCombo.h"
#include "platform/controls/ListBox.h"
#include "platform/runtime/Dates.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Keyboard.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QProgressDialog>
#include <QTimer>

using namespace Qt::StringLiterals;
using testing_support::Text;

namespace {

QString ResultOf(const Form& form) {
  return Child<QLabel>(form, u"lblMelding"_s).text();
}

bool IsOffered(const Form& form, const QString& button) {
  const auto& found = Child<QPushButton>(form, button);
  return found.isVisible() && found.isEnabled();
}

}  // namespace

class MarkedLines : public CatalogueTestInBothModes {
 protected:
  void AddSpots(int count) {
    for (int id = 1; id <= count; ++id)
      AddSpot({id, u"Spot %1"_s.arg(id, 3, 10, QChar(u'0')), u"D:\\audio\\s%1.mp3"_s.arg(id), 1});
  }

  QList<int> InField(const QString& field) const {
    return Numbers(station_.CurrentRows(u"SELECT ID, %1 FROM %2 ORDER BY ID"_s.arg(field, Table(u"ItemSpots"_s))),
                   field);
  }

  QList<QDate> EndDates() const {
    QList<QDate> days;
    dao::Recordset rows = station_.CurrentRows(u"SELECT EindDatum FROM %1 ORDER BY ID"_s.arg(Table(u"ItemSpots"_s)));
    for (; !rows.Eof(); rows.MoveNext())
      days += rows.Field(u"EindDatum"_s).toDate();
    return days;
  }

  // Marks all lines and gives them these hours; empty leaves a field as it opens.
  void SetHoursOfAll(Form& form, const QString& start, const QString& end = {}) {
    QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
    ModalDriver modal;
    modal.OnNext(u"frmGeldigheid"_s, [&](QDialog& window) {
      if (!start.isEmpty()) testing_support::SetText(window, u"txtStartUur"_s, start);
      if (!end.isEmpty()) testing_support::SetText(window, u"txtEindUur"_s, end);
      Click(window, u"cmdOk"_s);
    });
    Click(form, u"cmdUren"_s);
  }

  bool IsOffline() const { return GetParam() == Station::Mode::Offline; }
};

INSTANTIATE_TEST_SUITE_P(Modes, MarkedLines, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(MarkedLines, ActionsAreOfferedWithTheirCountWhileSeveralAreMarked) {
  AddSpots(3);
  frmItemSpots form(nullptr);
  Open(form);
  EXPECT_FALSE(IsOffered(form, u"cmdDupliceren"_s));
  List(form).SetListIndex(0);
  EXPECT_TRUE(IsOffered(form, u"cmdDupliceren"_s));
  EXPECT_FALSE(IsOffered(form, u"cmdDesaktiveerAlle"_s));
  EXPECT_FALSE(IsOffered(form, u"cmdEinddatum"_s));
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(ResultOf(form), u"3 gemarkeerd"_s);
  EXPECT_EQ(testing_support::Plain(Child<QPushButton>(form, u"cmdDesaktiveerAlle"_s).text()), u"3 desaktiveren"_s);
  for (const QString& button : {u"cmdDesaktiveerAlle"_s, u"cmdEinddatum"_s, u"cmdUren"_s, u"cmdDupliceren"_s})
    EXPECT_TRUE(IsOffered(form, button)) << button.toStdString();
}

TEST_P(MarkedLines, ThousandsAreMarkedInEveryCount) {
  AddSpots(1200);
  frmItemSpots form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(ResultOf(form), u"1.200 gemarkeerd"_s);
  EXPECT_EQ(testing_support::Plain(Child<QPushButton>(form, u"cmdDesaktiveerAlle"_s).text()), u"1.200 desaktiveren"_s);
  EXPECT_TRUE(Child<QLabel>(form, u"lblAantal"_s).text().startsWith(u"1.200 item-spots"_s));
}

// The required buttons act on ListIndex, the line selected last.
TEST_P(MarkedLines, RequiredButtonsActOnTheLineSelectedLast) {
  AddSpots(3);
  frmItemSpots form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_Down);
  QTest::keyClick(&List(form), Qt::Key_Down, Qt::ShiftModifier);
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(InField(u"Aktief"_s), (QList<int>{1, 0, 1}));
}

TEST_P(MarkedLines, AllMarkedBecomeInactiveAndComeBackOnce) {
  AddSpots(20);
  frmItemSpots form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  Click(form, u"cmdDesaktiveerAlle"_s);
  EXPECT_EQ(Lines(form), QStringList());
  EXPECT_EQ(ResultOf(form), u"20 item-spots zijn niet meer aktief"_s);
  EXPECT_EQ(station_.Log().size(), IsOffline() ? 20 : 0);
  ASSERT_TRUE(IsOffered(form, u"cmdOngedaan"_s));
  Click(form, u"cmdOngedaan"_s);
  EXPECT_EQ(Lines(form).size(), 20);
  EXPECT_FALSE(InField(u"Aktief"_s).contains(0));
  EXPECT_EQ(ResultOf(form), u"20 item-spots zijn weer aktief"_s);
  EXPECT_FALSE(IsOffered(form, u"cmdOngedaan"_s));
  EXPECT_TRUE(boxes_.Shown().empty());
}

// 20 lines: one key for the first, 19 with Shift, Alt+E, ten digits and dashes, Enter.
TEST_P(MarkedLines, TwentyEndDatesTakeThirtyTwoKeys) {
  AddSpots(20);
  frmItemSpots form(nullptr);
  Open(form);
  List(form).setFocus();
  testing_support::Keyboard keys;
  keys.Press(List(form), Qt::Key_Down);
  for (int line = 1; line < 20; ++line)
    keys.Press(List(form), Qt::Key_Down, Qt::ShiftModifier);
  ModalDriver modal;
  modal.OnNext(u"frmGeldigheid"_s, [&](QDialog& window) {
    EXPECT_EQ(window.windowTitle(), u"Einddatum"_s);
    auto& date = Child<controls::DateCombo>(window, u"cobStop"_s);
    keys.Type(date, u"31-12-2027"_s);
    keys.Press(date, Qt::Key_Return);
  });
  keys.Press(form, Qt::Key_E, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return modal.Done(); }));  // a mnemonic shows the button pressed for a moment
  EXPECT_EQ(keys.Count(), 32);
  EXPECT_EQ(EndDates(), QList<QDate>(20, QDate(2027, 12, 31)));
  EXPECT_EQ(InField(u"StartUur"_s), QList<int>(20, 0));
  EXPECT_EQ(ResultOf(form), u"Einddatum 31-12-2027 bij 20 item-spots"_s);
  EXPECT_EQ(List(form).ListIndex(), -1);
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(MarkedLines, AnEndDateThatIsNoneIsRefusedWithTheEditorsMessage) {
  AddSpots(2);
  frmItemSpots form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  ModalDriver modal;
  modal.OnNext(u"frmGeldigheid"_s, [&](QDialog& window) {
    Click(window, u"cmdOk"_s);
    EXPECT_EQ(boxes_.Shown().size(), 1u);
    EXPECT_TRUE(boxes_.Last().text.contains(u"Einddatum"_s));
    Click(window, u"cmdAnnuleren"_s);
  });
  Click(form, u"cmdEinddatum"_s);
  EXPECT_EQ(EndDates(), QList<QDate>(2, QDate(2099, 12, 31)));
  EXPECT_EQ(List(form).MarkedCount(), 2);
}

TEST_P(MarkedLines, HoursAreCorrectedAndWritten) {
  AddSpots(2);
  frmItemSpots form(nullptr);
  Open(form);
  SetHoursOfAll(form, u"7"_s, u"30"_s);
  EXPECT_EQ(InField(u"StartUur"_s), (QList<int>{7, 7}));
  EXPECT_EQ(InField(u"EindUur"_s), (QList<int>{23, 23}));
  EXPECT_EQ(ResultOf(form), u"Uren 7 tot en met 23 bij 2 item-spots"_s);
}

// Another workstation changed one spot and removed another after the list was read.
TEST_P(MarkedLines, EachRowIsReadAgain) {
  AddSpots(3);
  frmItemSpots form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  station_.OnCurrent(u"UPDATE %1 SET Naam = \"Anders\", LengteSec = 99 WHERE ID = 1"_s.arg(Table(u"ItemSpots"_s)));
  station_.OnCurrent(u"DELETE FROM %1 WHERE ID = 2"_s.arg(Table(u"ItemSpots"_s)));
  ModalDriver modal;
  modal.OnNext(u"frmGeldigheid"_s, [&](QDialog& window) {
    Child<controls::DateCombo>(window, u"cobStop"_s).SetText(u"01-02-2027"_s);
    Click(window, u"cmdOk"_s);
  });
  Click(form, u"cmdEinddatum"_s);
  EXPECT_EQ(EndDates(), QList<QDate>(2, QDate(2027, 2, 1)));
  EXPECT_EQ(InField(u"LengteSec"_s), (QList<int>{99, 32}));
  EXPECT_EQ(Lines(form), (QStringList{u"Anders"_s, u"Spot 003"_s}));
  ASSERT_EQ(boxes_.Shown().size(), 1u);
  EXPECT_EQ(boxes_.Last().text, u"Intussen verwijderd:\r\nSpot 002"_s);
  EXPECT_EQ(ResultOf(form), u"Einddatum 01-02-2027 bij 2 item-spots"_s);
}

TEST_P(MarkedLines, ARecordWithoutANameIsLeftOut) {
  AddSpots(1);
  station_.OnCurrent(u"INSERT INTO %1 (ID, Aktief) VALUES (9, 1)"_s.arg(Table(u"ItemSpots"_s)));
  frmItemSpots form(nullptr);
  Open(form);
  SetHoursOfAll(form, {});
  ASSERT_EQ(boxes_.Shown().size(), 1u);
  EXPECT_TRUE(boxes_.Last().text.startsWith(u"Niet gewijzigd"_s));
  EXPECT_EQ(ResultOf(form), u"Uren 0 tot en met 23 bij 0 item-spots (1 was al zo)"_s);
}

// The first failure ends the action: the other lines would fail one box after another.
TEST_P(MarkedLines, TheFirstFailureEndsTheAction) {
  AddSpots(3);
  station_.OnCurrent(u"UPDATE %1 SET Path = 'D:\\a\"b.mp3' WHERE ID = 2"_s.arg(Table(u"ItemSpots"_s)));
  frmItemSpots form(nullptr);
  Open(form);
  SetHoursOfAll(form, u"6"_s);
  OnlyError(u"Update_tblItemSpots"_s);
  EXPECT_EQ(InField(u"StartUur"_s), (QList<int>{6, 0, 0}));
  EXPECT_EQ(ResultOf(form), u"Uren 6 tot en met 23 bij 1 item-spot (gestopt, nog 2 niet gedaan)"_s);
}

TEST_P(MarkedLines, ALongActionCountsAndCanBeStopped) {
  AddSpots(60);
  frmItemSpots form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &form, [&] {
    auto* progress = form.findChild<QProgressDialog*>();
    if (progress == nullptr || progress->value() < 5) return;
    EXPECT_TRUE(progress->labelText().endsWith(u" van 60"_s)) << progress->labelText().toStdString();
    progress->cancel();
    look.stop();
  });
  look.start(0);
  Click(form, u"cmdDesaktiveerAlle"_s);
  const qsizetype done = InField(u"Aktief"_s).count(0);
  EXPECT_GE(done, 5);
  EXPECT_LT(done, 60);
  EXPECT_EQ(ResultOf(form),
            u"%1 item-spots zijn niet meer aktief (gestopt, nog %2 niet gedaan)"_s.arg(done).arg(60 - done));
}

// --- undoing Desaktiveer

// One key.
TEST_P(MarkedLines, ADeactivationIsUndoneWithOneKey) {
  AddSpots(2);
  station_.OnCurrent(u"UPDATE %1 SET Aktief = 1"_s.arg(Table(u"ItemSpots"_s)));
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"Spot 002"_s);
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(ResultOf(form), u"‘Spot 002’ is niet meer aktief"_s);
  testing_support::Keyboard keys;
  keys.Press(form, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(keys.Count(), 1);
  EXPECT_EQ(InField(u"Aktief"_s), (QList<int>{1, 1}));
  EXPECT_EQ(ResultOf(form), u"‘Spot 002’ is weer aktief"_s);
  QTest::keyClick(&List(form), Qt::Key_Down);
  EXPECT_EQ(List(form).Text(List(form).ListIndex()), u"Spot 002"_s);
}

TEST_P(MarkedLines, UndoWritesTheFormerValueOnce) {
  AddSpots(1);
  station_.OnCurrent(u"UPDATE %1 SET Aktief = -1"_s.arg(Table(u"ItemSpots"_s)));
  frmItemSpots form(nullptr);
  Open(form);
  Click(form, u"chkNietAktieve"_s);
  station_.OnCurrent(u"UPDATE %1 SET Aktief = 1"_s.arg(Table(u"ItemSpots"_s)));
  QTest::keyClick(&form, Qt::Key_F5);
  station_.OnCurrent(u"UPDATE %1 SET Aktief = -1"_s.arg(Table(u"ItemSpots"_s)));
  List(form).SetListIndex(0);
  Click(form, u"cmdDesaktiveer"_s);
  Click(form, u"cmdOngedaan"_s);
  EXPECT_EQ(InField(u"Aktief"_s), QList<int>{-1});
  station_.OnCurrent(u"UPDATE %1 SET Aktief = 0"_s.arg(Table(u"ItemSpots"_s)));
  QTest::keyClick(&form, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(InField(u"Aktief"_s), QList<int>{0});
}

TEST_P(MarkedLines, NothingIsUndoneForARecordThatWasInactiveOrIsGone) {
  AddSpots(2);
  frmItemSpots form(nullptr);
  Open(form);
  Click(form, u"chkNietAktieve"_s);
  station_.OnCurrent(u"UPDATE %1 SET Aktief = 0 WHERE ID = 1"_s.arg(Table(u"ItemSpots"_s)));
  Select(form, u"Spot 001"_s);
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(ResultOf(form), u"‘Spot 001’ was al niet aktief"_s);
  EXPECT_FALSE(IsOffered(form, u"cmdOngedaan"_s));
  Select(form, u"Spot 002"_s);
  Click(form, u"cmdDesaktiveer"_s);
  station_.OnCurrent(u"DELETE FROM %1 WHERE ID = 2"_s.arg(Table(u"ItemSpots"_s)));
  Click(form, u"cmdOngedaan"_s);
  ASSERT_EQ(boxes_.Shown().size(), 1u);
  EXPECT_EQ(boxes_.Last().text, u"Intussen verwijderd:\r\nSpot 002"_s);
}

TEST_P(MarkedLines, AnotherActionEndsTheOfferToUndo) {
  AddSpots(2);
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"Spot 001"_s);
  Click(form, u"cmdDesaktiveer"_s);
  Click(form, u"cmdNieuw"_s);
  EXPECT_FALSE(IsOffered(form, u"cmdOngedaan"_s));
  QTest::keyClick(&form, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(InField(u"Aktief"_s), (QList<int>{0, 1}));
}

TEST_P(MarkedLines, ItemsAreDeactivatedAndReturnToo) {
  AddItem(1, u"Blok A"_s);
  AddItem(2, u"Blok B"_s);
  frmItems form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  EXPECT_FALSE(IsOffered(form, u"cmdEinddatum"_s));
  Click(form, u"cmdDesaktiveerAlle"_s);
  EXPECT_EQ(Lines(form), QStringList());
  Click(form, u"cmdOngedaan"_s);
  EXPECT_EQ(Lines(form), (QStringList{u"Blok A"_s, u"Blok B"_s}));
}

// --- the context menu

TEST_P(MarkedLines, TheMenuKeyShowsTheButtonsOfTheLine) {
  AddSpots(3);
  frmItemSpots form(nullptr);
  Open(form);
  QStringList entries;
  const auto readMenu = [&] {
    QTimer::singleShot(0, &form, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      for (const QAction* entry : menu->actions())
        if (!entry->isSeparator()) entries += testing_support::Plain(entry->text());
      menu->close();
    });
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&List(form), &asked);
  };
  Select(form, u"Spot 002"_s);
  readMenu();
  EXPECT_EQ(entries, (QStringList{u"Dupliceren"_s, u"Open"_s, u"Desaktiveer"_s, u"Verwijder"_s}));
  entries.clear();
  QTest::keyClick(&List(form), Qt::Key_Down, Qt::ShiftModifier);
  readMenu();
  EXPECT_EQ(entries, (QStringList{u"2 desaktiveren"_s, u"Einddatum ..."_s, u"Uren ..."_s, u"2 dupliceren"_s,
                                  u"Open ‘Spot 003’"_s, u"Desaktiveer ‘Spot 003’"_s, u"Verwijder ‘Spot 003’"_s}));
}

TEST_P(MarkedLines, AnEntryOfTheMenuPressesItsButton) {
  AddSpots(1);
  frmItemSpots form(nullptr);
  Open(form);
  const QPoint line = List(form).visualRect(List(form).model()->index(0, 0)).center();
  QTest::mouseClick(List(form).viewport(), Qt::RightButton, {}, line);
  QTimer::singleShot(0, &form, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
  });
  QContextMenuEvent asked(QContextMenuEvent::Mouse, line, List(form).viewport()->mapToGlobal(line));
  QApplication::sendEvent(List(form).viewport(), &asked);
  EXPECT_EQ(visits_, QStringList{u"ItemSpotsDetail 1"_s});
}

// --- the line that was edited

TEST_P(MarkedLines, AfterTheEditorItsLineIsInSightAndDownGoesToIt) {
  AddSpots(60);
  frmItemSpots form(nullptr);
  Open(form);
  List(form).SetListIndex(0);
  inTheEditor_ = [&] {
    station_.OnCurrent(u"UPDATE %1 SET Naam = \"Zalm\" WHERE ID = 1"_s.arg(Table(u"ItemSpots"_s)));
    NoteSavedRecord(1);
  };
  Click(form, u"cmdOpen"_s);
  EXPECT_EQ(List(form).ListIndex(), -1);
  EXPECT_FALSE(Enabled(form, u"cmdOpen"_s));
  const QModelIndex line = List(form).model()->index(59, 0);
  EXPECT_EQ(line.data().toString(), u"Zalm"_s);
  EXPECT_TRUE(List(form).viewport()->rect().contains(List(form).visualRect(line).center()));
  EXPECT_TRUE(line.data(Qt::AccessibleTextRole).toString().contains(u"zojuist bewaard"_s));
  QTest::keyClick(&List(form), Qt::Key_Down);
  EXPECT_EQ(List(form).Text(List(form).ListIndex()), u"Zalm"_s);
}
