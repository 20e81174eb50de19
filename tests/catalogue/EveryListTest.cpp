// SPDX-License-Identifier: MIT
// Common behaviour of the three lists and of removing records, online and offline.
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QFile>
#include <QLineEdit>

#include <memory>
#include <string>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

std::string ListModeName(const ::testing::TestParamInfo<std::tuple<Kind, Station::Mode>>& list) {
  static const std::string kKinds[] = {"Spots", "Items", "Pingles"};
  const bool online = std::get<Station::Mode>(list.param) == Station::Mode::Online;
  return kKinds[static_cast<int>(std::get<Kind>(list.param))] + (online ? "Online" : "Offline");
}

}  // namespace

class EveryList : public CatalogueTest, public ::testing::WithParamInterface<std::tuple<Kind, Station::Mode>> {
 protected:
  EveryList() : CatalogueTest(std::get<Station::Mode>(GetParam())) {}

  static Kind ListKind() { return std::get<Kind>(GetParam()); }

  QString Things() const {
    return ListKind() == Kind::Spots ? u"ItemSpots"_s : ListKind() == Kind::Items ? u"Items"_s : u"ItemPingles"_s;
  }

  void Add(int id, const QString& naam) {
    station_.OnCurrent(
        u"INSERT INTO %1 (ID, Naam, Aktief) VALUES (%2, \"%3\", 1)"_s.arg(Table(Things()), QString::number(id), naam));
  }

  std::unique_ptr<Form> OpenList() {
    std::unique_ptr<Form> form;
    if (ListKind() == Kind::Spots) form = std::make_unique<frmItemSpots>(nullptr);
    if (ListKind() == Kind::Items) form = std::make_unique<frmItems>(nullptr);
    if (ListKind() == Kind::Pingles) form = std::make_unique<frmItemPingles>(nullptr);
    Open(*form);
    return form;
  }

  // Removes the record of the selected line, with the cleanup dialog or by answering the question.
  void RemoveSelected(const Form& form, const QString& naam) {
    if (ListKind() == Kind::Pingles) {
      boxes_.Answer(desktop::kAnswerYes);
      Click(form, u"cmdVerwijder"_s);
      EXPECT_TRUE(boxes_.Last().text.contains(u'"' + naam + u'"')) << boxes_.Last().text.toStdString();
      return;
    }
    ModalDriver modal;
    modal.OnNext(ListKind() == Kind::Spots ? u"frmItemSpotOpruimen"_s : u"frmItemOpruimen"_s, [&](QDialog& window) {
      EXPECT_EQ(Child<QLineEdit>(window, u"txtOpruimenVan"_s).text(), naam);
      Child<QCheckBox>(window, u"chkVerwijderID"_s).setChecked(true);
      Child<QPushButton>(window, u"cmdOk"_s).click();
    });
    Click(form, u"cmdVerwijder"_s);
  }

  QStringList Names() const {
    QStringList names;
    dao::Recordset rows = station_.CurrentRows(u"SELECT Naam FROM %1 ORDER BY ID"_s.arg(Table(Things())));
    for (; !rows.Eof(); rows.MoveNext())
      names += rows.Field(u"Naam"_s).toString();
    return names;
  }

  // Jingles are the exception: their deletes are not logged.
  QStringList DeletesLogged(int id) const {
    if (global.online || ListKind() == Kind::Pingles) return {};
    if (ListKind() == Kind::Spots) return {u"DELETE FROM tblItemSpots WHERE tblItemSpots.ID = %1"_s.arg(id)};
    return {u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = %1"_s.arg(id),
            u"DELETE FROM tblCopie_Items WHERE tblCopie_Items.ID = %1"_s.arg(id)};
  }
};

INSTANTIATE_TEST_SUITE_P(All, EveryList,
                         ::testing::Combine(::testing::Values(Kind::Spots, Kind::Items, Kind::Pingles),
                                            ::testing::Values(Station::Mode::Online, Station::Mode::Offline)),
                         ListModeName);

TEST_P(EveryList, OfTwoRecordsWithTheSameNameTheSelectedOneIsRemoved) {
  Add(1, u"Dubbel"_s);
  Add(2, u"Dubbel"_s);
  const auto form = OpenList();
  List(*form).SetListIndex(1);
  const auto chosen = static_cast<int>(List(*form).ItemData(1));
  RemoveSelected(*form, u"Dubbel"_s);
  EXPECT_EQ(IDs(Things()), QList<int>{3 - chosen});
  EXPECT_EQ(station_.Log(), DeletesLogged(chosen));
}

TEST_P(EveryList, LongAndForeignNamesAreShownInFullAndRemovedByID) {
  const QStringList names{QString(255, u'é'), u"שלום רדיו"_s, u"Spot 🎄 kerst"_s, u"\u202Eomgekeerd"_s};
  for (int id = 1; id <= names.size(); ++id)
    Add(id, names[id - 1]);
  const auto form = OpenList();
  form->grab();
  for (int id = 1; id <= names.size(); ++id) {
    const QString& name = names[id - 1];
    Select(*form, name);
    RemoveSelected(*form, name);
    EXPECT_EQ(Names(), names.mid(id)) << name.toStdString();
  }
  EXPECT_EQ(Lines(*form), QStringList());
}

TEST_P(EveryList, AClickBelowTheLastLineKeepsTheSelectionForTheButtons) {
  Add(7, u"Een"_s);
  Add(8, u"Twee"_s);
  const std::unique_ptr<Form> form = OpenList();
  Select(*form, u"Twee"_s);
  QWidget* lines = List(*form).viewport();
  const QPoint below(20, lines->height() - 4);
  ASSERT_FALSE(List(*form).indexAt(below).isValid());
  QTest::mouseClick(lines, Qt::LeftButton, Qt::NoModifier, below);
  QTest::mouseClick(lines, Qt::RightButton, Qt::NoModifier, below);
  ASSERT_TRUE(Enabled(*form, u"cmdOpen"_s));
  Click(*form, u"cmdOpen"_s);
  EXPECT_EQ(visits_.size(), 1);
  EXPECT_TRUE(visits_.value(0).endsWith(u" 8"_s)) << visits_.value(0).toStdString();
}

TEST_P(EveryList, SearchFindsForeignNames) {
  Add(1, u"Spot 🎄 kerst"_s);
  Add(2, u"ÉCLAIR"_s);
  const auto form = OpenList();
  auto& search = Child<QLineEdit>(*form, u"txtZoek"_s);
  search.setText(u"🎄"_s);
  EXPECT_EQ(Lines(*form), QStringList{u"Spot 🎄 kerst"_s});
  search.setText(u"écl"_s);
  EXPECT_EQ(Lines(*form), QStringList{u"ÉCLAIR"_s});
}

TEST_P(EveryList, TheEditorBelongsToTheList) {
  Add(1, u"Eerste"_s);
  const auto form = OpenList();
  Click(*form, u"cmdNieuw"_s);
  EXPECT_EQ(editorOwner_, form.get());
  editorOwner_ = nullptr;
  Select(*form, u"Eerste"_s);
  Click(*form, u"cmdOpen"_s);
  EXPECT_EQ(editorOwner_, form.get());
}

TEST_P(EveryList, RemovingAndRefreshingSetTheLastResult) {
  Add(1, u"Eerste"_s);
  const auto form = OpenList();
  Select(*form, u"Eerste"_s);
  global.lastResult = false;
  RemoveSelected(*form, u"Eerste"_s);
  EXPECT_TRUE(global.lastResult);
}

// The list is not notified; its next action finds no row, which is no database error.
TEST_P(EveryList, ListEmptiedByAnotherUserStillWorks) {
  Add(1, u"Eerste"_s);
  Add(2, u"Tweede"_s);
  const auto form = OpenList();
  Select(*form, u"Eerste"_s);
  station_.OnCurrent(u"DELETE FROM "_s + Table(Things()));
  Click(*form, u"cmdOpen"_s);
  EXPECT_EQ(visits_.size(), 1);
  EXPECT_EQ(Lines(*form), QStringList());
  EXPECT_FALSE(Enabled(*form, u"cmdOpen"_s));
  EXPECT_FALSE(Enabled(*form, u"cmdVerwijder"_s));
  EXPECT_TRUE(boxes_.Shown().empty());
  Add(3, u"Nieuw"_s);
  QTest::keyClick(form.get(), Qt::Key_F5);
  EXPECT_EQ(Lines(*form), QStringList{u"Nieuw"_s});
}

TEST_P(EveryList, RecordRemovedByAnotherUserIsNoError) {
  Add(1, u"Eerste"_s);
  Add(2, u"Tweede"_s);
  const auto form = OpenList();
  Select(*form, u"Eerste"_s);
  station_.OnCurrent(u"DELETE FROM %1 WHERE ID = 1"_s.arg(Table(Things())));
  // The dialog no longer finds a name; the question still quotes the line.
  RemoveSelected(*form, ListKind() == Kind::Pingles ? u"Eerste"_s : QString());
  EXPECT_EQ(IDs(Things()), QList<int>{2});
  EXPECT_EQ(Lines(*form), QStringList{u"Tweede"_s});
  for (const desktop::ShownMessageBox& box : boxes_.Shown())
    EXPECT_NE(box.style, 16) << box.text.toStdString();
}

TEST_P(EveryList, LostDatabaseIsReportedAndTheListKeepsItsLines) {
  Add(1, u"Eerste"_s);
  const auto form = OpenList();
  LoseDatabase();
  QTest::keyClick(form.get(), Qt::Key_F5);
  EXPECT_TRUE(OnlyError(u"FillLstOverzicht"_s).contains(u"Ovalisto"_s));
  EXPECT_EQ(Lines(*form), QStringList{u"Eerste"_s});
  FindDatabase();
  QApplication::setActiveWindow(form.get());
  Add(2, u"Tweede"_s);
  QTest::keyClick(form.get(), Qt::Key_F5);
  EXPECT_EQ(Lines(*form).size(), 2);
}
