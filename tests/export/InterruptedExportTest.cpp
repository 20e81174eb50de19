// SPDX-License-Identifier: MIT
// Messages about an interrupted export, at the next start or before the next export.
#include "export/InterruptedExport.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "export/OfflineLogExport.h"
#include "export/frmPlanningExporteren.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "tests/export/LogWitness.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QFile>
#include <QPushButton>

#include <gtest/gtest.h>

#include <cerrno>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Station;

namespace {

// The file was renamed, and the log still contains its statements.
class InterruptedExports : public testing::Test {
 protected:
  InterruptedExports() {
    Log(1, u"UPDATE first"_s);
    const runtime::ClockScope clock(QDateTime(QDate(2024, 1, 31), QTime(15, 45, 7)));
    OfflineLogExport logExport(global.localDatabasePath);
    path_ = logExport.WriteFile(global.exportPath);
  }
  void Log(int id, const QString& statement) const {
    station_.OnLocal(
        u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(QString::number(id), statement));
  }
  static void PressOk(frmPlanningExporteren& form) {
    form.Form_Load();
    form.show();
    testing_support::Child<QPushButton>(form, u"cmdOk"_s).click();
  }

  Station station_;
  QString path_;
};

}  // namespace

TEST_F(InterruptedExports, TheUserIsInformedOfAFinishedFile) {
  const MessageBoxScript boxes{kAnswerOk};
  FinishInterruptedExport(global.localDatabasePath);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().style, 64);
  EXPECT_TRUE(boxes.Last().text.contains(path_));
  EXPECT_EQ(station_.Log(), QStringList());
  FinishInterruptedExport(global.localDatabasePath);
  EXPECT_EQ(boxes.Shown().size(), 1u);
}

TEST_F(InterruptedExports, TheNextExportHasOnlyLaterStatements) {
  Log(2, u"UPDATE second"_s);
  frmPlanningExporteren form(nullptr);
  const MessageBoxScript boxes{kAnswerOk, kAnswerOk};
  PressOk(form);
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_TRUE(boxes.Shown()[0].text.contains(path_));
  EXPECT_EQ(boxes.Shown()[1].text, GetMsgElements(5004).text);
  EXPECT_EQ(StatementsInFiles(station_.ExportFolder()), (QStringList{u"UPDATE first"_s, u"UPDATE second"_s}));
  EXPECT_EQ(station_.Log(), QStringList());
}

TEST_F(InterruptedExports, NothingIsExportedWhileTheDriveIsUnreachable) {
  Log(2, u"UPDATE second"_s);
  frmPlanningExporteren form(nullptr);
  const runtime::ProbeLookScope away([](const QString& path) { return path.contains(u".tql"_s) ? EIO : 0; });
  const MessageBoxScript boxes{kAnswerOk, kAnswerOk};
  PressOk(form);
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[0].title, u"Opslaan"_s);
  EXPECT_TRUE(boxes.Shown()[0].text.contains(path_));
  EXPECT_EQ(station_.Log().size(), 2);
  EXPECT_EQ(StatementsInFiles(station_.ExportFolder()).size(), 1);
}

TEST_F(InterruptedExports, TheUserIsAskedAboutAMissingFile) {
  for (const int answer : {kAnswerNo, kAnswerYes}) {
    ASSERT_EQ(station_.Log().size(), 1);
    ASSERT_TRUE(QFile::remove(runtime::HostPath(path_)));
    const MessageBoxScript boxes{answer};
    FinishInterruptedExport(global.localDatabasePath);
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Last().style, 292);
    EXPECT_TRUE(boxes.Last().text.contains(path_));
    EXPECT_EQ(station_.Log().size(), answer == kAnswerYes ? 0 : 1);
    if (answer == kAnswerNo) path_ = OfflineLogExport(global.localDatabasePath).WriteFile(global.exportPath);
  }
}
