#include "items/SpotList.h"

#include "data/Catalogue.h"
#include "data/forms/SpotDetails.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

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
    if (seconds != seconds_.constEnd()) details.trailing = LengthText(*seconds);
    list.SetDetails(line, details);
  }
}

QString SpotLengths::Total(const controls::ListBox& list) const {
  const int count = list.ListCount();
  if (count == 0) return {};
  qint32 total = 0;
  for (int line = 0; line < count; ++line)
    total += seconds_.value(list.ItemData(line));
  return (count == 1 ? u"1 item-spot"_s : u"%1 item-spots"_s.arg(count)) + u", samen " + LengthText(total);
}
