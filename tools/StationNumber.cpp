#include "tools/StationNumber.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

qint16 StationNumber(const Arguments& arguments) {
  if (!arguments.Has(u"--station"_s)) return 0;
  const QString text = arguments.Value(u"--station"_s);
  const qint16 number = runtime::ToInteger(text);
  if (number < 0) throw runtime::Error(u"Een zendernummer is 0 of meer; '%1' kan niet."_s.arg(text));
  return number;
}
