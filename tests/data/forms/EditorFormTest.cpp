// SPDX-License-Identifier: MIT
#include "data/forms/EditorForm.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "platform/controls/ComboBox.h"
#include "platform/dao/Database.h"
#include "platform/desktop/Lock.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Error.h"
#include "tests/support/Station.h"

#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

// A minimal editor with one text that must not be empty.
class Editor : public EditorForm {
 public:
  Editor() : EditorForm(nullptr) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&text);
    layout->addWidget(&combo);
    text.setObjectName(u"txtTekst"_s);
    combo.setObjectName(u"cboKeuze"_s);
    QObject::connect(&text, &QLineEdit::textChanged, this, [this] { Changed(); });
  }
  void InitForm() override { steps += u"InitForm"_s; }
  void FillForm() override {
    steps += u"FillForm"_s;
    MarkLoaded();
  }
  void InitControls() override { steps += u"InitControls"_s; }
  void InitCommands() override { steps += u"InitCommands"_s; }
  void Loaded() override { steps += u"Loaded"_s; }
  bool OpslaanProceed() override { return !text.text().isEmpty(); }
  void Opslaan() override {
    ++saved;
    isDirty_ = !writeWorks;
  }
  StoredValues ReadStoredValues() const override {
    return ValuesOf(dao::OpenDatabase(global.serverDatabasePath).OpenRecordset(u"SELECT * FROM tblItems"_s), compared);
  }
  using EditorForm::CancelAndClose;
  using EditorForm::MarkIncomplete;
  using EditorForm::SaveAndClose;
  using Form::LockControl;
  using Form::SetCboTextWhereID;

  QLineEdit text;
  controls::ComboBox combo;
  QStringList steps;
  int saved = 0;
  bool writeWorks = true;
  QStringList compared;  // fields of tblItems
};

}  // namespace

TEST(EditorForm, NumericSelectionOpensThatRecordAndAnythingElseANewOne) {
  const Station station;
  Editor editor;
  global.gstrSelectedID = u"12"_s;
  editor.Form_Load();
  EXPECT_FALSE(editor.IsNew());
  EXPECT_EQ(editor.ID(), 12);
  global.gstrSelectedID = QString::fromUtf16(kNewRecord);
  editor.Form_Load();
  EXPECT_TRUE(editor.IsNew());
  EXPECT_EQ(editor.ID(), 0);
}

TEST(EditorForm, OpeningCallsItsStepsInOrder) {
  const Station station;
  Editor editor;
  editor.Form_Load();
  EXPECT_EQ(editor.steps,
            (QStringList{u"InitForm"_s, u"FillForm"_s, u"InitControls"_s, u"InitCommands"_s, u"Loaded"_s}));
}

TEST(EditorForm, IncompletelyReadRecordCannotBeSavedButANewOneCan) {
  const Station station;
  for (const QString& selected : {u"12"_s, QString::fromUtf16(kNewRecord)}) {
    Editor editor;
    global.gstrSelectedID = selected;
    editor.Form_Load();
    EXPECT_NO_THROW(editor.RequireLoaded());
    editor.MarkIncomplete();
    if (editor.IsNew()) {
      EXPECT_NO_THROW(editor.RequireLoaded());
    } else {
      EXPECT_THROW(editor.RequireLoaded(), runtime::Error);
    }
  }
}

// Without the values to compare with, saving would replace another workstation's change without a question.
TEST(EditorForm, ARecordThatCannotBeComparedIsNotSaved) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (12, \"Blok\")"_s);
  Editor editor;
  editor.compared = {u"Naam"_s, u"Kleur"_s};
  global.gstrSelectedID = u"12"_s;
  editor.Form_Load();
  try {
    editor.RequireLoaded();
    FAIL() << "nothing was thrown";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"'Kleur'"_s)) << error.what();
    EXPECT_TRUE(error.Description().contains(u"Er is niets bewaard"_s)) << error.what();
  }
}

TEST(EditorForm, CancellingWithoutChangesAsksNothing) {
  const Station station;
  Editor editor;
  editor.show();
  const desktop::MessageBoxScript boxes;
  editor.CancelAndClose();
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(editor.isVisible());
}

TEST(EditorForm, AnsweringNoDiscardsTheChangesAndCloses) {
  const Station station;
  Editor editor;
  editor.show();
  editor.text.setText(u"x"_s);
  desktop::MessageBoxScript boxes({kAnswerNo});
  editor.CancelAndClose();
  EXPECT_EQ(editor.saved, 0);
  EXPECT_FALSE(editor.isVisible());
}

TEST(EditorForm, AnsweringYesSavesAndCloses) {
  const Station station;
  Editor editor;
  editor.show();
  editor.text.setText(u"x"_s);
  desktop::MessageBoxScript boxes({kAnswerYes});
  QTest::keyClick(&editor, Qt::Key_Escape);
  EXPECT_EQ(editor.saved, 1);
  EXPECT_FALSE(editor.isVisible());
}

TEST(EditorForm, AnsweringYesWithInvalidInputStaysOpen) {
  const Station station;
  Editor editor;
  editor.show();
  editor.text.setText(u"x"_s);
  editor.text.clear();
  desktop::MessageBoxScript boxes({kAnswerYes});
  editor.close();
  EXPECT_EQ(editor.saved, 0);
  EXPECT_TRUE(editor.isVisible());
  EXPECT_TRUE(editor.IsDirty());
}

TEST(EditorForm, FailedWriteStaysOpenAndDirty) {
  const Station station;
  Editor editor;
  editor.show();
  editor.text.setText(u"x"_s);
  editor.writeWorks = false;
  editor.SaveAndClose();
  EXPECT_TRUE(editor.isVisible());
  EXPECT_TRUE(editor.IsDirty());
}

TEST(EditorForm, QuestionThatCannotBeShownKeepsTheInput) {
  const Station station;
  Editor editor;
  editor.show();
  editor.text.setText(u"x"_s);
  QFile::remove(station.Folder() + u"/data/OvalistoLocal.mdb");
  const desktop::MessageBoxScript boxes;
  editor.CancelAndClose();
  EXPECT_TRUE(editor.isVisible());
  EXPECT_TRUE(editor.IsDirty());
}

TEST(EditorForm, LockControlLocksByNameAndReportsAnUnknownName) {
  const Station station;
  Editor editor;
  editor.LockControl(u"txtTekst"_s, true);
  EXPECT_TRUE(editor.text.isReadOnly());
  EXPECT_EQ(desktop::FieldBackground(&editor.text), editor.palette().color(QPalette::Button));
  editor.LockControl(u"txtTekst"_s, false);
  EXPECT_FALSE(editor.text.isReadOnly());
  EXPECT_EQ(desktop::FieldBackground(&editor.text), editor.palette().color(QPalette::Base));
  const desktop::MessageBoxScript boxes;
  editor.LockControl(u"txtAnders"_s, true);
  EXPECT_EQ(boxes.Last().title, u"LockControl"_s);
}

TEST(EditorForm, SetCboTextWhereIDSelectsByNumber) {
  const Station station;
  Editor editor;
  editor.combo.AddItem(u"a"_s, 5);
  editor.combo.AddItem(u"b"_s, 6);
  editor.SetCboTextWhereID(u"cboKeuze"_s, 6);
  EXPECT_EQ(editor.combo.ListIndex(), 1);
  editor.SetCboTextWhereID(u"cboKeuze"_s, 7);
  EXPECT_EQ(editor.combo.ListIndex(), -1);
}

TEST(NameExists, IgnoresCaseReservedCharactersAndTheRecordItself) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"BLOK A\")"_s);
  const QString server = global.serverDatabasePath;
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u"Blok A"_s, true, 0));
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u" 'blok a' "_s, true, 0));
  EXPECT_FALSE(NameExists(server, u"tblItems"_s, u"blok a"_s, false, 1));
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u"blok a"_s, false, 2));
  EXPECT_FALSE(NameExists(server, u"tblItems"_s, u"blok b"_s, true, 0));
}

TEST(NameExists, NameWithAnApostropheIsAlsoComparedAsTyped) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"Jan's spot\")"_s);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (2, \"Piet's spot\")"_s);
  const QString server = global.serverDatabasePath;
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u"Jan's spot"_s, true, 0));
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u" JAN'S SPOT "_s, true, 0));
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u"Jan's spot"_s, false, 2));
  EXPECT_FALSE(NameExists(server, u"tblItems"_s, u"Jan's spot"_s, false, 1));
  EXPECT_FALSE(NameExists(server, u"tblItems"_s, u"jan's SPOT"_s, false, 1));
  EXPECT_FALSE(NameExists(server, u"tblItems"_s, u"Jan's spots"_s, true, 0));
  // Saving rejects this name later.
  EXPECT_FALSE(NameExists(server, u"tblItems"_s, u"\"Jan's spot\""_s, true, 0));
}

TEST(NameExists, RecordThatKeepsItsNameMayShareIt) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"Jan's spot\")"_s);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (2, \"Jan's spot\")"_s);
  const QString server = global.serverDatabasePath;
  EXPECT_FALSE(NameExists(server, u"tblItems"_s, u"Jan's spot"_s, false, 2));
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u"Jan's spot"_s, false, 3));
  EXPECT_TRUE(NameExists(server, u"tblItems"_s, u"Jan's spot"_s, true, 0));
}
