// SPDX-License-Identifier: MIT
// Lists, editors and cleanup on a drive that is slow, fails or disappears at any time: no
// row is lost, no file counts as missing because of its drive, and windows stay responsive.
#include "catalogue/SpotStateLoader.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/dao/WriteWait.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/FlakyDrive.h"
#include "tests/support/LongTests.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <iterator>
#include <random>
#include <string>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::FlakyDrive;
using testing_support::Station;

namespace {

constexpr int kEvents = 25;
constexpr int kSpots = 40;

class AwayDrive : public testing::Test {
 protected:
  AwayDrive() {
    runtime::SetDrives({{u"D"_s, station_.ServerFolder()}, {u"E"_s, station_.AudioFolder()}, {u"Z"_s, u"/"_s}});
    global.databasePath = u"D:"_s;
    FormDatabasePaths();
    for (int id = 1; id <= kSpots; ++id)
      AddSpot(id);
    station_.OnServer(u"INSERT INTO tblItems (ID, Naam, Aktief) VALUES (1, \"blok\", 1)"_s);
  }

  static QString NameOf(int id) { return u"spot %1"_s.arg(id); }
  QString FileOf(int id) const { return station_.AudioFolder() + u"/spot%1.wav"_s.arg(id); }

  void AddSpot(int id) {
    station_.OnServer(
        u"INSERT INTO tblItemSpots (ID, Naam, Path, LengteSec, StartPunt, Mixpunt, StartDatum, StartUur, EindDatum, "
        u"EindUur, AantalGedraaid, Aktief) VALUES (%1, \"%2\", \"E:\\spot%1.wav\", 1, 0, 0, 45000, 0, 60000, 23, 0, 1)"_s
            .arg(QString::number(id), NameOf(id)));
    QFile file(FileOf(id));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(kSound);
    names_[id] = NameOf(id);
  }

  int AnySpot() {
    return std::next(names_.begin(), static_cast<qsizetype>(random_() % static_cast<unsigned>(names_.size()))).key();
  }

  void List();
  void Preview();
  void Save();
  void CleanUp();
  std::string AnyEvent();
  void Check(const MessageBoxScript& boxes, const std::string& event);
  static QMap<int, QString> Names(dao::Recordset rows);

  // A WAV of 100 ms, 8-bit mono at 1000 Hz.
  const QByteArray kSound =
      QByteArray("RIFF\x88\0\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\xE8\x03\0\0\xE8\x03\0\0\x01\0\x08\0data\x64\0\0\0", 44) +
      QByteArray(100, '\x80');
  Station station_;
  dao::WriteWaitScope soon_{std::chrono::milliseconds(50)};
  std::mt19937 random_{7};
  QMap<int, QString> names_;    // expected rows of the catalogue
  QMap<int, QString> renamed_;  // by the current event: either the old or the new name is valid
  int removed_ = 0;             // by the current event: this spot may or may not exist
};

// Actions that are possible in the window.
void ExpectAlive(QWidget& form) {
  auto& search = Child<QLineEdit>(form, u"txtZoek"_s);
  QTest::keyClicks(&search, u"spot"_s);
  EXPECT_EQ(search.text(), u"spot"_s);
}

void AwayDrive::List() {
  frmItemSpots list(nullptr);
  list.Form_Load();
  list.show();
  QTest::keyClick(&list, Qt::Key_F5);
  QApplication::processEvents();
  ExpectAlive(list);
  Child<QPushButton>(list, u"cmdSluiten"_s).click();
  EXPECT_FALSE(list.isVisible());
}

void AwayDrive::Preview() {
  global.gstrSelectedID = QString::number(AnySpot());
  frmItemSpotsDetail editor;
  editor.Form_Load();
  editor.show();
  QApplication::processEvents();
  Child<QPushButton>(editor, u"cmdAnnuleren"_s).click();
  EXPECT_FALSE(editor.isVisible());
}

void AwayDrive::Save() {
  const int id = AnySpot();
  global.gstrSelectedID = QString::number(id);
  frmItemSpotsDetail editor;
  editor.Form_Load();
  editor.show();
  auto& naam = Child<QLineEdit>(editor, u"txtNaam"_s);
  if (naam.text() != names_[id]) return;  // the record could not be read, so there is nothing to save
  const QString changed = NameOf(id) + u" n%1"_s.arg(random_() % 1000);
  naam.setText(changed);
  renamed_[id] = changed;
  Child<QPushButton>(editor, u"cmdOk"_s).click();
  // Unsaved input is still in the open window.
  EXPECT_TRUE(!editor.isVisible() || naam.text() == changed);
}

void AwayDrive::CleanUp() {
  removed_ = AnySpot();
  global.gstrOpruimenID = QString::number(removed_);
  frmItemSpotOpruimen dialog(nullptr);
  dialog.Form_Load();
  dialog.show();
  Child<QCheckBox>(dialog, u"chkVerwijderID"_s).setChecked(true);
  Child<QCheckBox>(dialog, u"chkVerwijderBestand"_s).setChecked(true);
  Child<QPushButton>(dialog, u"cmdOk"_s).click();
  EXPECT_FALSE(dialog.isVisible());
}

// Its name.
std::string AwayDrive::AnyEvent() {
  switch (random_() % 4) {
    case 0:
      List();
      return "list";
    case 1:
      Preview();
      return "preview";
    case 2:
      Save();
      return "save";
    default:
      CleanUp();
      return "cleanup";
  }
}

QMap<int, QString> AwayDrive::Names(dao::Recordset rows) {
  QMap<int, QString> names;
  for (; !rows.Eof(); rows.MoveNext())
    names[rows.Field(u"ID"_s).toInt()] = rows.Field(u"Naam"_s).toString();
  return names;
}

// The rows after the drive works again.
void AwayDrive::Check(const MessageBoxScript& boxes, const std::string& event) {
  const QMap<int, QString> names = Names(station_.ServerRows(u"SELECT ID, Naam FROM tblItemSpots"_s));
  for (auto spot = names_.begin(); spot != names_.end(); ++spot) {
    const int id = spot.key();
    if (!names.contains(id)) {
      EXPECT_EQ(id, removed_) << event;
      continue;
    }
    EXPECT_TRUE(names[id] == spot.value() || names[id] == renamed_.value(id))
        << event << ": " << names[id].toStdString();
    EXPECT_TRUE(id == removed_ || QFile::exists(FileOf(id))) << event;
  }
  for (const desktop::ShownMessageBox& box : boxes.Shown())
    EXPECT_FALSE(box.text.contains(u"bestaat niet"_s)) << event << ": " << box.text.toStdString();
  SpotStateLoader survey;
  survey.Start(std::chrono::minutes(1));
  EXPECT_TRUE(survey.IsRead()) << event;
  names_ = names;
}

}  // namespace

TEST_F(AwayDrive, LosesNoRowAndTreatsNoFileAsMissing) {
  FlakyDrive drive({station_.ServerFolder(), station_.AudioFolder()}, 11);
  drive.Hold(true);
  List();  // closing it fills the local copy
  int told = 0;
  for (int number = 0; number < kEvents * testing_support::LongTests(); ++number) {
    renamed_.clear();
    removed_ = 0;
    const MessageBoxScript boxes;
    drive.Hold(false);
    const std::string name = AnyEvent();
    drive.Hold(true);
    Check(boxes, name);
    told += static_cast<int>(boxes.Shown().size());
    // The rows of the copy are refreshed, or restored after a failure.
    EXPECT_FALSE(Names(station_.LocalRows(u"SELECT ID, Naam FROM tblCopie_ItemSpots"_s)).isEmpty()) << name;
    if (removed_ != 0 && !names_.contains(removed_)) AddSpot(removed_);
    if (HasFailure()) break;
  }
  RecordProperty("hindered calls", drive.Hindered());
  RecordProperty("messages", told);
  EXPECT_GT(drive.Hindered(), 0);
  EXPECT_GT(told, 0);
}
