// SPDX-License-Identifier: MIT
// The export window while an export runs: texts, enabled controls, failures.
#include "data/Globals.h"
#include "data/Messages.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/export/ExportWindow.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Hindrance.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <cerrno>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::Plain;
using testing_support::Station;
using namespace export_window;

namespace {

// Texts of the progress panel's label, recorded each time the panel is shown or painted.
class StepWatch : public QObject {
 public:
  explicit StepWatch(frmPlanningExporteren& form)
      : panel_(&Child<QFrame>(form, u"picProgress"_s)), label_(&Child<QLabel>(form, u"lblProgressStatus"_s)) {
    panel_->installEventFilter(this);
    label_->installEventFilter(this);
  }
  const QStringList& Steps() const { return steps_; }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    const bool seen = event->type() == QEvent::Show || event->type() == QEvent::Paint;
    if (seen && (steps_.isEmpty() || steps_.last() != label_->text())) steps_ += label_->text();
    return false;
  }

 private:
  QFrame* panel_;
  QLabel* label_;
  QStringList steps_;
};

}  // namespace

TEST(RunningExport, ShowsTheTextOfEachStep) {
  const Station station;
  FillLog(station);
  Window window;
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window.form));
  const MessageBoxScript boxes{kAnswerOk};
  const StepWatch watch(window.form);
  window.PressOk();
  EXPECT_EQ(watch.Steps(), (QStringList{u"Opstarten van export ..."_s, u"Initializeren ... "_s,
                                        u"Offline-log controleren en exporteren"_s}));
}

TEST(RunningExport, WhileItRunsOnlyThePanelAndItsButtonAreEnabled) {
  const Station station;
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerOk};
  QString step;
  bool onlyButton = false;
  bool waiting = false;
  const runtime::ClockScope look([&] {
    step = Child<QLabel>(window.form, u"lblProgressStatus"_s).text();
    onlyButton = !Child<QPushButton>(window.form, u"cmdOk"_s).isEnabled() &&
                 !Child<QLineEdit>(window.form, u"txtBestemming"_s).isEnabled() &&
                 Child<QPushButton>(window.form, u"cmdAnnuleren"_s).isEnabled() &&
                 Child<QFrame>(window.form, u"picProgress"_s).isVisible();
    waiting =
        QGuiApplication::overrideCursor() != nullptr && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
    return kNow;
  });
  window.PressOk();
  EXPECT_EQ(step, u"Offline-log controleren en exporteren"_s);
  EXPECT_TRUE(onlyButton);
  EXPECT_TRUE(waiting);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(Child<QPushButton>(window.form, u"cmdOk"_s).isEnabled());
  EXPECT_EQ(Child<QPushButton>(window.form, u"cmdAnnuleren"_s).toolTip(), u"Sluiten"_s);
}

TEST(RunningExport, PressingTheButtonOrEscDuringAnExportDoesNotStopIt) {
  const Station station;
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerOk};
  QStringList captions;
  const auto interrupt = [&] {
    auto& button = Child<QPushButton>(window.form, u"cmdAnnuleren"_s);
    captions += Plain(button.text()) + u'/' + button.toolTip();
    button.click();
    QTest::keyClick(&window.form, Qt::Key_Escape);
    window.form.close();
  };
  QMetaObject::invokeMethod(&window.form, interrupt, Qt::QueuedConnection);
  window.PressOk();
  EXPECT_EQ(captions, QStringList{u"Onderbreken/Onderbreken"_s});
  EXPECT_EQ(Content(station, u"20240131154507.tql"_s), "DELETE FROM c;\r\nUPDATE a SET b = 1;\r\n");
  EXPECT_EQ(LogRows(station), 0);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(5004).text);
}

TEST(RunningExport, AFullDiskLeavesTheLogAndNoHalfFile) {
  const Station station;
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerOk, kAnswerOk};
  {
    const testing_support::FullDisk full(10);
    window.PressOk();
  }
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[0].title, u"Opslaan"_s);
  EXPECT_EQ(boxes.Shown()[0].style, 16);
  EXPECT_TRUE(boxes.Shown()[0].text.contains(u"20240131154507.tql"_s));
  EXPECT_EQ(boxes.Shown()[1].text, GetMsgElements(5004).text);
  EXPECT_TRUE(Exported(station).isEmpty());
  EXPECT_EQ(LogRows(station), 3);
}

TEST(RunningExport, AFailureToEmptyTheLogIsReportedAndTheExportContinues) {
  const Station station;
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerOk, kAnswerOk};
  global.lastResult = true;
  {
    const testing_support::FileFaults fault([](const files::FileCall& call) {
      return call.kind == files::FileCall::Remove && call.path.string().ends_with("-export") ? EIO : 0;
    });
    window.PressOk();
  }
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[0].title, u"DeleteAllInTable"_s);
  EXPECT_EQ(boxes.Shown()[0].style, 16);
  EXPECT_EQ(boxes.Shown()[1].text, GetMsgElements(5004).text);
  EXPECT_FALSE(global.lastResult);
  EXPECT_EQ(Exported(station).size(), 1);
  EXPECT_FALSE(window.form.isVisible());
}

TEST(RunningExport, AMissingOrDamagedLocalDatabaseIsNamed) {
  const Station station;
  for (const bool garbage : {false, true}) {
    QFile::remove(runtime::HostPath(global.localDatabasePath));
    if (garbage) runtime::WriteFile(global.localDatabasePath, QByteArray(5000, 'x'));
    Window window;
    const MessageBoxScript boxes{kAnswerOk, kAnswerOk};
    window.PressOk();
    ASSERT_EQ(boxes.Shown().size(), 2u);
    EXPECT_EQ(boxes.Shown()[0].title, u"Opslaan"_s);
    EXPECT_TRUE(boxes.Shown()[0].text.contains(u"OvalistoLocal.mdb"_s)) << boxes.Shown()[0].text.toStdString();
    EXPECT_EQ(boxes.Shown()[1].title, u"GetMsgElements"_s);
    EXPECT_TRUE(Exported(station).isEmpty());
  }
}
