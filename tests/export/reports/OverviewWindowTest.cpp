// SPDX-License-Identifier: MIT
// The window of the overviews: what it shows, saves and prints.
#include "export/reports/ReportCsv.h"
#include "export/reports/ReportPages.h"
#include "export/reports/Reports.h"
#include "export/reports/frmOverzichten.h"
#include "platform/desktop/FileChooser.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Probe.h"
#include "tests/export/reports/Catalogue.h"
#include "tests/support/Gate.h"
#include "tests/support/Hindrance.h"
#include "tests/support/Ui.h"
#include "tests/support/Waiting.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QPrinter>
#include <QProcess>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTest>
#include <QTextBrowser>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;
using testing_support::Child;
using testing_support::Gate;

namespace {

const QString kGone = u"geluidsbestand ontbreekt"_s;

class OverviewWindow : public ::testing::Test {
 protected:
  OverviewWindow() {
    catalogue_.AddSpot(1, u"Zomer"_s, 32, 73050);
    catalogue_.AddSpot(2, u"Kerst"_s, 95, 45740);
    catalogue_.AddItem(7, u"Ochtend"_s);
    catalogue_.Link(7, 1, 2);
  }
  void Open() {
    drive_->answers.Open();
    OpenWithoutAnswers();
  }
  void OpenWithoutAnswers() {
    form_ = std::make_unique<frmOverzichten>(nullptr);
    form_->Form_Load();
    form_->show();
  }
  void Click(const QString& button) const { testing_support::Click(*form_, button); }
  QString Shown() const { return Child<QTextBrowser>(*form_, u"txtOverzicht"_s).toPlainText(); }
  QString File(const QString& name) const { return catalogue_.station.Folder() + u'/' + name; }

  PaperCatalogue catalogue_;
  // Replaces the file check: one audio file can be missing, or all checks can block. A check may outlive the test.
  struct Drive {
    QString gone;
    Gate answers;
  };
  std::shared_ptr<Drive> drive_ = std::make_shared<Drive>();
  runtime::ProbeLookScope look_{[drive = drive_](const QString& path) {
    if (!path.endsWith(u".mp3"_s)) return QFileInfo::exists(path) ? 0 : ENOENT;
    drive->answers.Pass();
    return !drive->gone.isEmpty() && path.endsWith(drive->gone) ? ENOENT : 0;
  }};
  runtime::ClockScope clock_{QDateTime(QDate(2025, 3, 11), QTime(12, 0))};
  desktop::MessageBoxScript boxes_;
  desktop::FileChooserScript chooser_;
  std::unique_ptr<frmOverzichten> form_;
};

class OwnHome {
 public:
  explicit OwnHome(const QString& folder) { qputenv("HOME", QFile::encodeName(folder)); }
  ~OwnHome() { qputenv("HOME", before_); }
  OwnHome(const OwnHome&) = delete;
  OwnHome& operator=(const OwnHome&) = delete;

 private:
  QByteArray before_ = qgetenv("HOME");
};

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The text of a PDF, extracted by another program; null when that program is not installed.
QString TextOfPdf(const QString& path) {
  const QString reader = QStandardPaths::findExecutable(u"pdftotext"_s);
  if (reader.isEmpty()) return {};
  QProcess process;
  process.start(reader, {u"-layout"_s, u"-enc"_s, u"UTF-8"_s, path, u"-"_s});
  process.waitForFinished(60'000);
  return QString::fromUtf8(process.readAllStandardOutput()) + u""_s;
}

}  // namespace

TEST_F(OverviewWindow, ShowsTheChosenOverview) {
  Open();
  EXPECT_TRUE(Shown().contains(u"Zomer"_s) && Shown().contains(u"2 item-spots, samen 2:07"_s));
  Click(u"optItems"_s);
  EXPECT_TRUE(Shown().contains(u"Ochtend"_s) && !Shown().contains(u"Zomer"_s));
  Click(u"optVerlopen"_s);
  EXPECT_TRUE(Shown().contains(u"Kerst"_s) && !Shown().contains(u"Zomer"_s));
}

TEST_F(OverviewWindow, ShowsAndSavesTheStateOfAMissingFile) {
  drive_->gone = u"2.mp3"_s;
  Open();
  ASSERT_TRUE(WaitUntil([&] { return Shown().contains(kGone); }));
  EXPECT_EQ(Shown().count(kGone), 1);
  chooser_.Choose(File(u"a.csv"_s));
  Click(u"cmdCsv"_s);
  EXPECT_EQ(Bytes(File(u"a.csv"_s)).count("geluidsbestand ontbreekt"), 1);
  Click(u"optItems"_s);
  EXPECT_TRUE(Shown().contains(kGone));
}

TEST_F(OverviewWindow, DoesNotWaitForAnUnresponsiveDrive) {
  drive_->gone = u"1.mp3"_s;
  for (int id = 10; id < 90; ++id)
    catalogue_.AddSpot(id, u"Spot %1"_s.arg(id), 10, 73050);
  OpenWithoutAnswers();
  EXPECT_TRUE(Shown().contains(u"Zomer"_s));
  EXPECT_FALSE(Shown().contains(kGone));
  EXPECT_TRUE(Child<QAbstractButton>(*form_, u"cmdPdf"_s).isEnabled());
  auto& bar = *Child<QTextBrowser>(*form_, u"txtOverzicht"_s).verticalScrollBar();
  bar.setValue(bar.maximum());
  const int place = bar.value();
  drive_->answers.Open();
  ASSERT_TRUE(WaitUntil([&] { return Shown().contains(kGone); }));
  EXPECT_EQ(bar.value(), place);
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_F(OverviewWindow, SavesTheCsvInTheChosenFolder) {
  Open();
  chooser_.Choose(File(u"a.csv"_s));
  Click(u"cmdCsv"_s);
  EXPECT_EQ(Bytes(File(u"a.csv"_s)), CsvOf(CatalogueReport()));
  EXPECT_EQ(QFileInfo(chooser_.Shown().at(0).startFolder).fileName(), u"Item-spots 2025-03-11.csv"_s);
  EXPECT_EQ(Child<QLabel>(*form_, u"lblBewaard"_s).text(), u"Bewaard: "_s + File(u"a.csv"_s));
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_F(OverviewWindow, StartsInTheFolderOfTheLastSave) {
  Open();
  chooser_.Choose(File(u"a.csv"_s));
  Click(u"cmdCsv"_s);
  Click(u"cmdPdf"_s);
  EXPECT_EQ(chooser_.Shown().at(1).startFolder, File(u"Item-spots 2025-03-11.pdf"_s));
}

TEST_F(OverviewWindow, StartsInTheDocumentsFolderIfItExists) {
  const OwnHome home(catalogue_.station.Folder());
  Open();
  Click(u"cmdPdf"_s);
  EXPECT_EQ(QFileInfo(chooser_.Shown().at(0).startFolder).path(), catalogue_.station.Folder());
  ASSERT_TRUE(QDir(catalogue_.station.Folder()).mkdir(u"Documents"_s));
  Click(u"cmdPdf"_s);
  EXPECT_EQ(QFileInfo(chooser_.Shown().at(1).startFolder).path(), File(u"Documents"_s));
}

TEST_F(OverviewWindow, SavesAPdfThatOtherProgramsCanRead) {
  Open();
  chooser_.Choose(File(u"a.pdf"_s));
  Click(u"cmdPdf"_s);
  EXPECT_TRUE(Bytes(File(u"a.pdf"_s)).startsWith("%PDF-"));
  const QString text = TextOfPdf(File(u"a.pdf"_s));
  if (text.isNull()) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_TRUE(text.contains(u"Kerst"_s) && text.contains(u"Zomer"_s)) << text.toStdString();
  EXPECT_TRUE(text.contains(u"dinsdag 11 maart 2025"_s)) << text.toStdString();
  EXPECT_TRUE(text.contains(u"Pagina 1 van 1"_s)) << text.toStdString();
}

TEST_F(OverviewWindow, NumbersThePagesAndRepeatsTheColumnTitles) {
  for (int id = 10; id < 160; ++id)
    catalogue_.AddSpot(id, u"Spot %1"_s.arg(id), 10, 73050);
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(File(u"b.pdf"_s));
  PrintReport(CatalogueReport(), printer);
  const QString text = TextOfPdf(File(u"b.pdf"_s));
  if (text.isNull()) GTEST_SKIP() << "pdftotext is not installed";
  const QStringList pages = text.split(u'\f', Qt::SkipEmptyParts);
  ASSERT_GT(pages.size(), 2);
  for (qsizetype page = 0; page < pages.size(); ++page) {
    EXPECT_TRUE(pages[page].contains(u"Pagina %1 van %2"_s.arg(page + 1).arg(pages.size())));
    if (page + 1 < pages.size()) {
      EXPECT_TRUE(pages[page].contains(u"Startdatum"_s)) << page;
    }
  }
  for (int id = 10; id < 160; ++id)
    EXPECT_EQ(text.count(u"Spot %1 "_s.arg(id)), 1) << id;
}

TEST_F(OverviewWindow, AWrappedLineIsNotSplit) {
  for (int id = 10; id < 100; ++id) {
    const QString filler = u" van de vereniging voor plattelandstoerisme"_s.repeated(id % 3);
    catalogue_.AddSpot(id, u"Begin%1%2 Einde%1"_s.arg(id).arg(filler), 10, 73050);
  }
  Open();
  chooser_.Choose(File(u"c.pdf"_s));
  Click(u"cmdPdf"_s);
  const QString text = TextOfPdf(File(u"c.pdf"_s));
  if (text.isNull()) GTEST_SKIP() << "pdftotext is not installed";
  const QStringList pages = text.split(u'\f', Qt::SkipEmptyParts);
  ASSERT_GT(pages.size(), 2);
  for (const QString& page : pages) {
    for (int id = 10; id < 100; ++id)
      EXPECT_EQ(page.contains(u"Begin%1"_s.arg(id)), page.contains(u"Einde%1"_s.arg(id))) << id;
  }
}

TEST_F(OverviewWindow, ACancelledChoiceSavesNothing) {
  Open();
  chooser_.Cancel();
  Click(u"cmdPdf"_s);
  EXPECT_EQ(chooser_.Shown().size(), 1U);
  EXPECT_TRUE(boxes_.Shown().empty());
  EXPECT_EQ(Child<QLabel>(*form_, u"lblBewaard"_s).text(), QString());
}

TEST_F(OverviewWindow, AMissingFolderGivesAnErrorThatNamesTheFile) {
  Open();
  chooser_.Choose(File(u"nergens/a.csv"_s));
  Click(u"cmdCsv"_s);
  ASSERT_EQ(boxes_.Shown().size(), 1U);
  EXPECT_EQ(boxes_.Last().title, u"cmdCsv_Click"_s);
  EXPECT_EQ(boxes_.Last().style, 16);
  EXPECT_TRUE(boxes_.Last().text.contains(u"a.csv"_s)) << boxes_.Last().text.toStdString();
}

TEST_F(OverviewWindow, AFullDiskKeepsTheExistingFile) {
  Open();
  QFile old(File(u"a.csv"_s));
  ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("oud") == 3);
  old.close();
  chooser_.Choose(File(u"a.csv"_s));
  {
    const testing_support::FullDisk full(16);
    Click(u"cmdCsv"_s);
  }
  EXPECT_EQ(boxes_.Shown().size(), 1U);
  EXPECT_EQ(Bytes(File(u"a.csv"_s)), QByteArray("oud"));
}

TEST_F(OverviewWindow, AnUnreadableReportCannotBeSaved) {
  global.serverDatabasePath = u"Z:\\nergens\\Server.mdb"_s;
  Open();
  ASSERT_EQ(boxes_.Shown().size(), 1U);
  for (const QString& button : {u"cmdPdf"_s, u"cmdCsv"_s, u"cmdAfdrukken"_s})
    EXPECT_FALSE(Child<QAbstractButton>(*form_, button).isEnabled()) << button.toStdString();
}
