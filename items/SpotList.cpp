#include "items/SpotList.h"

#include "data/Catalogue.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace {

QString Clock(qint64 seconds) {
  return u"%1:%2"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

}  // namespace

void SpotLengths::Read() {
  seconds_.clear();
  const Catalogue catalogue = CurrentCatalogue();
  try {
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows = database.OpenRecordset(u"SELECT ID, LengteSec FROM "_s + catalogue.itemSpots);
    for (; !rows.Eof(); rows.MoveNext()) {
      seconds_.insert(rows.Field(u"ID"_s).toLongLong(), rows.Field(u"LengteSec"_s).toInt());
    }
  } catch (const runtime::Error&) {
    seconds_.clear();
  }
}

void SpotLengths::Show(controls::ListBox& list) const {
  for (int line = 0; line < list.ListCount(); ++line) {
    controls::LineDetails details;
    const auto seconds = seconds_.constFind(list.ItemData(line));
    if (seconds != seconds_.constEnd()) details.trailing = Clock(*seconds);
    list.SetDetails(line, details);
  }
}

QString SpotLengths::Total(const controls::ListBox& list) const {
  const int count = list.ListCount();
  if (count == 0) return {};
  qint64 total = 0;
  for (int line = 0; line < count; ++line)
    total += seconds_.value(list.ItemData(line));
  return (count == 1 ? u"1 item-spot"_s : u"%1 item-spots"_s.arg(count)) + u", samen " + Clock(total);
}
