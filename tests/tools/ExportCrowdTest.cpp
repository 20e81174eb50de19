// SPDX-License-Identifier: MIT
// Several program folders that export into one folder at the same moment: every statement is in one file, once.
#include "data/ExportBasis.h"
#include "export/ContentDigest.h"
#include "platform/dao/Database.h"
#include "platform/runtime/TextFile.h"
#include "tests/tools/RunTool.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kStatementsEach = 2;

int FromEnvironment(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr ? std::max(1, std::atoi(text)) : otherwise;
}

class ExportCrowd : public testing::Test {
 protected:
  ExportCrowd() {
    EXPECT_TRUE(QDir(root_.path()).mkdir(u"samen"_s));
    for (int number = 0; number < folders_; ++number) {
      EXPECT_EQ(RunTool({u"create"_s, Folder(number)}).exitCode, kDone);
      const QString settings = Folder(number) + u"/ovalis.ini"_s;
      QByteArray text = runtime::ReadFile(settings);
      text.replace("ExportPath=D:\\export",
                   QByteArray("ExportPath=Z:" + QFile::encodeName(Shared()).replace('/', '\\')));
      runtime::WriteFile(settings, text);
    }
  }
  QString Folder(int number) const { return root_.filePath(u"map%1"_s.arg(number)); }
  QString Local(int number) const { return Folder(number) + u"/data/OvalistoLocal.mdb"_s; }
  QString Shared() const { return root_.filePath(u"samen"_s); }

  // Logs in every folder and exports all of them at once.
  QStringList Round(int round) const {
    QStringList logged;
    for (int number = 0; number < folders_; ++number) {
      for (int id = 1; id <= kStatementsEach; ++id) {
        logged += u"UPDATE t SET a = %1"_s.arg((round * folders_ + number) * kStatementsEach + id);
        dao::OpenDatabase(Local(number))
            .Execute(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(QString::number(id),
                                                                                            logged.last()));
      }
    }
    std::vector<std::unique_ptr<QProcess>> programs;
    for (int number = 0; number < folders_; ++number) {
      programs.push_back(std::make_unique<QProcess>());
      programs.back()->start(QStringLiteral(SPOTROOSTER_DB), {u"export"_s, Folder(number), u"--vorige-verwerkt"_s});
    }
    for (const auto& program : programs) {
      EXPECT_TRUE(program->waitForFinished(-1));
      EXPECT_EQ(program->exitCode(), kDone) << program->readAllStandardError().toStdString();
    }
    return logged;
  }

  // The content of the files, which are removed.
  QStringList TakeExported() const {
    QStringList statements;
    const QDir folder(Shared());
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
      if (name.endsWith(u".basis"_s)) continue;
      EXPECT_TRUE(name.endsWith(u".tql"_s)) << name.toStdString();
      const QByteArray content = runtime::ReadFile(folder.filePath(name));
      EXPECT_EQ(basis::Read(basis::PathOf(folder.filePath(name))).header.digest, ContentDigest::Of(content));
      statements += QString::fromLatin1(content).split(u";\r\n"_s, Qt::SkipEmptyParts);
      QFile::remove(folder.filePath(name));
      QFile::remove(basis::PathOf(folder.filePath(name)));
    }
    EXPECT_EQ(folder.entryList(QDir::Files | QDir::Hidden), QStringList());
    return statements;
  }

  const int folders_ = FromEnvironment("SPOTROOSTER_EXPORTERS", 6);
  const int rounds_ = FromEnvironment("SPOTROOSTER_EXPORT_ROUNDS", 2);
  QTemporaryDir root_;
};

}  // namespace

TEST_F(ExportCrowd, LosesAndDoublesNoStatement) {
  int lost = 0;
  int all = 0;
  for (int round = 0; round < rounds_; ++round) {
    QStringList logged = Round(round);
    QStringList exported = TakeExported();
    std::sort(logged.begin(), logged.end());
    std::sort(exported.begin(), exported.end());
    EXPECT_EQ(exported, logged) << "round " << round;
    all += static_cast<int>(logged.size());
    lost += static_cast<int>(logged.size() - exported.size());
  }
  RecordProperty("statements", all);
  RecordProperty("lost", lost);
  std::printf("%d simultaneous exports x %d rounds: %d statements, %d lost\n", folders_, rounds_, all, lost);
}
