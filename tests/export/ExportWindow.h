// SPDX-License-Identifier: MIT
#pragma once

#include "export/frmPlanningExporteren.h"
#include "platform/runtime/Clock.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QDir>
#include <QFile>
#include <QPushButton>

// An export window on a station with a log.
namespace export_window {

inline const QDateTime kNow(QDate(2024, 1, 31), QTime(15, 45, 7));

// Three rows, not in the order of their IDs, one of them empty.
inline void FillLog(const testing_support::Station& station) {
  using namespace Qt::StringLiterals;
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (3, \"UPDATE a SET b = 1\")"_s);
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID) VALUES (2)"_s);
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"DELETE FROM c \")"_s);
}

inline int LogRows(const testing_support::Station& station) {
  return station.LocalRows(QStringLiteral("SELECT ID FROM tblOfflineLog")).RecordCount();
}

// Every file of the export folder but the basis of each export that is there.
inline QStringList Exported(const testing_support::Station& station) {
  QStringList names = QDir(station.ExportFolder()).entryList(QDir::Files | QDir::Hidden);
  for (const QString& name : QStringList(names))
    names.removeOne(name + QStringLiteral(".basis"));
  return names;
}

// The temporary files that a killed export left beside the database: removing them would be calls of the next one.
inline void RemoveLeftovers(const testing_support::Station& station) {
  const QDir data(station.Folder() + QStringLiteral("/data"));
  for (const QString& name : data.entryList({QStringLiteral("*.spotrooster-tmp")}, QDir::Files | QDir::Hidden))
    QFile::remove(data.filePath(name));
}

inline QByteArray Content(const testing_support::Station& station, const QString& name) {
  QFile file(station.ExportFolder() + u'/' + name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

// Loads and shows the window, with a fixed clock.
struct Window {
  Window() {
    form.Form_Load();
    form.show();
  }
  void PressOk() { testing_support::Child<QPushButton>(form, QStringLiteral("cmdOk")).click(); }

  frmPlanningExporteren form{nullptr};
  runtime::ClockScope clock{kNow};
};

}  // namespace export_window
