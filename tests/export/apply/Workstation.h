// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"
#include "data/Rows.h"
#include "platform/dao/Database.h"

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

// A workstation that works offline, without its windows: copies of the catalogue, the statements as the write layer
// builds and logs them, and their rows before and after.
class Workstation {
 public:
  Workstation(QString name, QString folder) : name_(std::move(name)), folder_(std::move(folder)) {}

  const QString& Name() const { return name_; }

  // Takes the copies of these tables again ("tblItemSpots" ...), as closing a list does; all when none is named.
  void Refresh(const QString& serverPath, const QStringList& tables = {});

  using Fields = QMap<QString, dao::Value>;
  using Rows = QMap<qint64, Fields>;  // by ID
  Rows Of(const QString& table) const { return tables_[table]; }
  qint32 NewID(const QString& table) const;
  // The spots of an item by their order.
  QList<qint32> SpotsOf(qint32 item) const;

  void InsertSpot(const ItemSpotRow& row);
  void UpdateSpot(const ItemSpotRow& row);
  void SetAktief(const QString& table, qint32 id, qint32 aktief);
  void ResetPlayCount(qint32 spot);
  void DeleteSpot(qint32 id);
  void InsertJingle(const ItemPingleRow& row);
  void UpdateJingle(const ItemPingleRow& row);
  void DeleteJingle(qint32 id);
  // The item, then its list of spots, as its editor saves it.
  void InsertItem(const ItemRow& row, const QList<qint32>& spots);
  void UpdateItem(const ItemRow& row, const QList<qint32>& spots);
  // The list, then the item, as the cleanup deletes it.
  void DeleteItem(qint32 id);

  // The row as it is, to be changed and updated.
  ItemSpotRow Spot(qint32 id) const;
  ItemPingleRow Jingle(qint32 id) const;
  ItemRow Item(qint32 id) const;

  // Writes the log to an export file with its basis, and empties it. Empty when nothing was logged.
  QString Export(bool withBasis = true);
  bool HasLog() const { return !log_.isEmpty(); }

 private:
  struct Logged {
    QString statement;
    basis::Entry entry;
  };
  QString Fingerprint(const QString& table, qint64 id) const;
  void Refer(basis::Entry& entry, const QString& table, qint64 id) const;
  void ReferJingles(basis::Entry& entry) const;
  void Change(const QString& statement, const QString& table, qint64 id, const std::optional<Fields>& after);
  void SetLinks(qint32 item, const QList<qint32>& spots);

  QString name_;
  QString folder_;
  QMap<QString, Rows> tables_;
  QMap<QString, QStringList> fields_;
  QMap<qint64, QMap<qint64, qint64>> links_;  // item, order, spot
  QList<Logged> log_;
  int exports_ = 0;
};

// The form of a basis row.
basis::Row RowOf(const QStringList& fields, const Workstation::Fields& values);
