// SPDX-License-Identifier: MIT
// Settings and exports on read-only files and in read-only folders: refused with the
// reason, and nothing is written. Each test runs in a child process that gave up root, since permissions do not apply
// to root.
#include "data/Globals.h"
#include "data/Messages.h"
#include "export/frmDefaults.h"
#include "export/frmPlanningExporteren.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/FolderContent.h"
#include "tests/support/Hindrance.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <functional>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::FolderContent;
using testing_support::Station;

namespace {

class ReadOnlyExportDeathTest : public testing::Test {
 protected:
  ReadOnlyExportDeathTest() {
    station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"DELETE FROM c\")"_s);
    runtime::WriteFile(ini_, "; keep\r\n[Files]\r\nDatabasePath=" + global.databasePath.toLatin1() + "\r\n");
    Permit(station_.Folder(), 0777);
    QDirIterator below(station_.Folder(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (below.hasNext())
      Permit(below.next(), 0777);
  }

  static void Permit(const QString& hostPath, mode_t mode) { ::chmod(QFile::encodeName(hostPath).constData(), mode); }

  static bool TellsWhy(const QString& text) {
    return text.contains(u"toegang geweigerd"_s) || text.contains(u"is alleen-lezen"_s);
  }

  // Runs an action on the window in a child without rights: expects an error box with this title, the file and the
  // reason, and no change in any file of the station.
  template <class Window>
  void ExpectRefused(const std::function<void(Window&)>& work, const QString& title, const QString& file) {
    const auto before = FolderContent(station_.Folder());
    const auto child = [&] {
      testing_support::BecomeNobody();
      MessageBoxScript boxes;
      for (int answer = 0; answer < 4; ++answer)
        boxes.Answer(desktop::kAnswerOk);
      Window form(nullptr);
      form.Form_Load();
      form.show();
      work(form);
      bool told = false;
      for (const desktop::ShownMessageBox& box : boxes.Shown()) {
        told = told || (box.title == title && box.text.contains(file) && TellsWhy(box.text));
        if (!told) std::fprintf(stderr, "%s: %s\n", qPrintable(box.title), qPrintable(box.text));
      }
      std::_Exit(told ? 0 : 1);
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(0), "");
    EXPECT_TRUE(FolderContent(station_.Folder()) == before);
  }

  void ExpectExportRefused(const QString& file) {
    ExpectRefused<frmPlanningExporteren>([](auto& form) { Child<QPushButton>(form, u"cmdOk"_s).click(); }, u"Opslaan"_s,
                                         file);
  }
  void ExpectSettingsRefused(const QString& title, const QString& file) {
    ExpectRefused<frmDefaults>(
        [](auto& form) {
          Child<QLineEdit>(form, u"txtDatabasepath"_s).setText(u"Q:\\elders"_s);
          Child<QPushButton>(form, u"cmdOk"_s).click();
        },
        title, file);
  }

  const Station station_;
  const QString ini_ = global.programFolder + u"\\ovalis.ini"_s;
  const QString local_ = runtime::HostPath(global.localDatabasePath);
};

}  // namespace

TEST_F(ReadOnlyExportDeathTest, AReadOnlyExportFolderGetsNoExport) {
  Permit(station_.ExportFolder(), 0555);
  ExpectExportRefused(u".tql"_s);
}

TEST_F(ReadOnlyExportDeathTest, ALogThatCannotBeEmptiedIsNotExported) {
  Permit(local_, 0444);
  ExpectExportRefused(u"OvalistoLocal.mdb"_s);
}

TEST_F(ReadOnlyExportDeathTest, AnExportWithoutAWritableRecordIsNotStarted) {
  Permit(QFileInfo(local_).path(), 0555);
  ExpectExportRefused(u"OvalistoLocal.mdb"_s);
}

TEST_F(ReadOnlyExportDeathTest, AReadOnlySettingsFileIsNotChanged) {
  Permit(local_, 0444);
  Permit(runtime::HostPath(ini_), 0444);
  ExpectSettingsRefused(u"cmdOk_Click"_s, u"ovalis.ini"_s);
}

TEST_F(ReadOnlyExportDeathTest, ASettingsFileInAReadOnlyFolderIsNotChanged) {
  Permit(local_, 0444);
  Permit(station_.Folder(), 0555);
  ExpectSettingsRefused(u"cmdOk_Click"_s, u"ovalis.ini"_s);
}

TEST_F(ReadOnlyExportDeathTest, AModeThatCannotBeStoredIsReportedUnderItsProcedure) {
  Permit(local_, 0444);
  Permit(station_.Folder(), 0555);
  ExpectSettingsRefused(u"Update_cdeInstellingen_OnlineYn"_s, u"OvalistoLocal.mdb"_s);
}
