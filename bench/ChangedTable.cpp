// SPDX-License-Identifier: MIT
#include "bench/ChangedTable.h"

#include "bench/Plain.h"
#include "platform/dao/Database.h"
#include "platform/dao/Storage.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/table/TableWriter.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

struct Spot {
  explicit Spot(int number, int version = 0)
      : id(number),
        name(u"Bakkerij actie week %1"_s.arg((number + version) % 4000)),
        path(u"D:\\Audio\\Spots\\klant %1\\spot %2.mp3"_s.arg(number % 97).arg(number)),
        length(15 + (number + version) % 45),
        day(45'000 + (number * 37 + version) % 700) {}

  int id;
  QString name;
  QString path;
  int length;
  int day;
};

// The same statements for both engines.
QString InsertSql(const Spot& spot) {
  return u"INSERT INTO tblItemSpots (ID, Naam, Path, LengteSec, StartDatum, Aktief) VALUES (%1, '%2', '%3', %4, %5, 1)"_s
      .arg(QString::number(spot.id), spot.name, spot.path, QString::number(spot.length), QString::number(spot.day));
}

QString UpdateSql(const Spot& spot) {
  return u"UPDATE tblItemSpots SET Naam = '%1', LengteSec = %2, StartDatum = %3 WHERE ID = %4"_s.arg(
      spot.name, QString::number(spot.length), QString::number(spot.day), QString::number(spot.id));
}

QString DeleteSql(int id) {
  return u"DELETE FROM tblItemSpots WHERE ID = "_s + QString::number(id);
}

dao::FieldDef Field(const QString& name, dao::FieldType type, int size = 0) {
  dao::FieldDef field;
  field.name = name;
  field.type = type;
  field.size = size;
  return field;
}

void Create(const QString& path) {
  dao::CreateDatabase(path);
  dao::IndexDef key;
  key.name = u"PrimaryKey"_s;
  key.fields = {{u"ID"_s, dao::Direction::Ascending}};
  key.primary = key.unique = key.required = true;
  dao::IndexDef byDay;
  byDay.name = u"StartDatum"_s;
  byDay.fields = {{u"StartDatum"_s, dao::Direction::Ascending}};
  dao::OpenDatabase(path).CreateTable(
      {u"tblItemSpots"_s,
       {Field(u"ID"_s, dao::FieldType::Long), Field(u"Naam"_s, dao::FieldType::Text, 255),
        Field(u"Path"_s, dao::FieldType::Text, 255), Field(u"LengteSec"_s, dao::FieldType::Integer),
        Field(u"StartDatum"_s, dao::FieldType::Date), Field(u"Aktief"_s, dao::FieldType::Integer)},
       {key, byDay}});
}

void FillFile(const QString& path, int rows) {
  const auto storage = dao::OpenStorage(path);
  const auto turn = storage->Begin(dao::Access::Write);
  const auto table = storage->OpenTable(u"tblItemSpots"_s);
  for (int id = 1; id <= rows; ++id) {
    const Spot spot(id);
    table->Insert({std::int64_t{spot.id}, spot.name.toStdU16String(), spot.path.toStdU16String(),
                   std::int64_t{spot.length}, static_cast<double>(spot.day), std::int64_t{1}});
  }
  turn->Commit();
}

class DaoTable final : public ChangedTable {
 public:
  explicit DaoTable(const QString& folder) : path_(folder + u"/dao.mdb"_s) { Create(path_); }
  QString Name() const override { return u"dao"_s; }
  QString Path() const override { return path_; }
  void Fill(int rows) override { FillFile(path_, rows); }
  void Insert(int id) override { Execute(InsertSql(Spot(id))); }
  void Update(int id, int version) override { Execute(UpdateSql(Spot(id, version))); }
  void Delete(int id) override { Execute(DeleteSql(id)); }
  Totals Read() override {
    const dao::Recordset sums = dao::OpenDatabase(path_).OpenRecordset(
        u"SELECT COUNT(*) AS Aantal, SUM(ID) AS Nummers, SUM(LengteSec) AS Lengtes, SUM(StartDatum) AS Dagen FROM tblItemSpots"_s);
    return {sums.Field(u"Aantal"_s).toLongLong(), sums.Field(u"Nummers"_s).toLongLong(),
            sums.Field(u"Lengtes"_s).toLongLong(), sums.Field(u"Dagen"_s).toLongLong()};
  }

 private:
  void Execute(const QString& sql) {
    Require(dao::OpenDatabase(path_).Execute(sql) == 1, "rows changed by a statement");
  }

  QString path_;
};

class JetTable final : public ChangedTable {
 public:
  JetTable(const QString& folder, jet::FileSystem& files) : files_(files), path_(folder + u"/jet.mdb"_s) {
    Create(path_);
  }
  QString Name() const override { return u"jet"_s; }
  QString Path() const override { return path_; }
  void Fill(int rows) override {
    FillFile(path_, rows);
    jet::OpenOptions options;
    options.writable = true;
    database_ = jet::Database::Open(path_.toStdString(), options, files_);
  }
  void Insert(int id) override {
    const Spot spot(id);
    std::vector<jet::Value> row = {std::int64_t{spot.id},     spot.name.toStdU16String(),    spot.path.toStdU16String(),
                                   std::int64_t{spot.length}, static_cast<double>(spot.day), std::int64_t{1}};
    Change([&](jet::TableWriter& writer) { writer.Insert(row); });
  }
  void Update(int id, int version) override {
    const Spot spot(id, version);
    const std::vector<jet::Value> row = {jet::Value(),
                                         spot.name.toStdU16String(),
                                         jet::Value(),
                                         std::int64_t{spot.length},
                                         static_cast<double>(spot.day),
                                         jet::Value()};
    Change([&](jet::TableWriter& writer) { writer.Update(RowOf(id), row, {false, true, false, true, true, false}); });
  }
  void Delete(int id) override {
    Change([&](jet::TableWriter& writer) { writer.Delete(RowOf(id)); });
  }
  Totals Read() override {
    const jet::ReadTurn reading(*database_);
    const jet::Table table = database_->OpenTable(u"tblItemSpots");
    Totals totals;
    for (jet::TableCursor rows = table.Scan({0, 3, 4}); rows.Next(); ++totals.rows) {
      totals.ids += std::get<std::int64_t>(rows.Values()[0]);
      totals.lengths += std::get<std::int64_t>(rows.Values()[1]);
      totals.days += static_cast<qint64>(std::get<double>(rows.Values()[2]));
    }
    return totals;
  }

 private:
  template <typename Work>
  void Change(Work work) {
    jet::WriteTurn turn(*database_);
    work(*database_->OpenWriter(u"tblItemSpots"));
    turn.Commit();
  }
  jet::RowId RowOf(int id) {
    const std::vector<jet::Value> key = {std::int64_t{id}};
    const jet::Table table = database_->OpenTable(u"tblItemSpots");
    jet::KeyCursor found = table.Lookup(0, key);
    Require(found.Next(), "a key that is there");
    return found.Id();
  }

  jet::FileSystem& files_;
  QString path_;
  std::unique_ptr<jet::Database> database_;
};

class SqliteTable final : public ChangedTable {
 public:
  explicit SqliteTable(const QString& folder) : path_(folder + u"/beside.sqlite"_s), file_(path_) {
    file_.Run(
        "CREATE TABLE tblItemSpots (ID INTEGER PRIMARY KEY, Naam TEXT, Path TEXT, LengteSec INT, StartDatum REAL, "
        "Aktief INT)");
    file_.Run("CREATE INDEX StartDatum ON tblItemSpots (StartDatum)");
  }
  QString Name() const override { return u"SQLite"_s; }
  QString Path() const override { return path_; }
  void Fill(int rows) override {
    file_.Run("BEGIN");
    for (int id = 1; id <= rows; ++id)
      Insert(id);
    file_.Run("COMMIT");
  }
  void Insert(int id) override { file_.Run(InsertSql(Spot(id)).toUtf8()); }
  void Update(int id, int version) override { file_.Run(UpdateSql(Spot(id, version)).toUtf8()); }
  void Delete(int id) override { file_.Run(DeleteSql(id).toUtf8()); }
  Totals Read() override {
    const auto sum = [&](const char* what) {
      return file_.Number("SELECT CAST(" + QByteArray(what) + " AS INT) FROM tblItemSpots");
    };
    return {sum("COUNT(*)"), sum("SUM(ID)"), sum("SUM(LengteSec)"), sum("SUM(StartDatum)")};
  }

 private:
  QString path_;
  Plain file_;
};

}  // namespace

std::unique_ptr<ChangedTable> TableOfDao(const QString& folder) {
  return std::make_unique<DaoTable>(folder);
}

std::unique_ptr<ChangedTable> TableOfJet(const QString& folder, jet::FileSystem& files) {
  return std::make_unique<JetTable>(folder, files);
}

std::unique_ptr<ChangedTable> TableOfSqlite(const QString& folder) {
  return std::make_unique<SqliteTable>(folder);
}

}  // namespace bench
