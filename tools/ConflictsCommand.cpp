// SPDX-License-Identifier: MIT
#include "export/apply/Conflicts.h"
#include "platform/runtime/Error.h"
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"

using namespace Qt::StringLiterals;

namespace {

const QString kTake = u"--take"_s;
const QString kAll = u"--all"_s;

QString RecordOf(const apply::Conflict& conflict) {
  const QString name = conflict.Name();
  const QString record = apply::WordFor(conflict.table) + u' ' + QString::number(conflict.number);
  return name.isEmpty() ? record : record + u" \"" + name + u'"';
}

QString ChoiceOf(const apply::Conflict& conflict) {
  if (conflict.IsWaiting()) return u"wacht"_s;
  return u"gekozen: %1, %2"_s.arg(*conflict.choice == apply::Side::Server ? u"server"_s : u"offline"_s,
                                  conflict.chosen.toString(u"dd-MM-yyyy HH:mm"_s));
}

void Show(const apply::Conflict& conflict, std::ostream& out) {
  const auto line = [&](const QString& text) { out << text.toStdString() << '\n'; };
  line(u"%1  %2, van %3: %4 (%5)"_s.arg(QString::number(conflict.id), RecordOf(conflict), conflict.source,
                                        apply::TextFor(conflict.reason), ChoiceOf(conflict)));
  if (!conflict.offline) line(u"   offline: verwijderd"_s);
  if (!conflict.server) line(u"   server: is er niet"_s);
  for (const apply::FieldDifference& field : apply::DifferencesOf(conflict)) {
    line(u"   %1%2: was \"%3\", offline \"%4\", server \"%5\""_s.arg(
        field.isConflict ? u"! "_s : QString(), field.field, field.before, field.offline, field.server));
  }
}

QList<qint64> NumbersOf(const QStringList& words) {
  QList<qint64> ids;
  for (const QString& word : words) {
    bool isNumber = false;
    ids += word.toLongLong(&isNumber);
    if (!isNumber) throw UseError(u"'%1' is geen nummer van een botsing."_s.arg(word));
  }
  return ids;
}

int ListOrSettle(const Arguments& arguments, const Streams& streams) {
  const QString database = DatabasePathOf(arguments.Plain().first());
  const QList<qint64> ids = NumbersOf(arguments.Plain().mid(1));
  const QString side = arguments.Value(kTake);
  if (arguments.Has(kTake) && side != u"server"_s && side != u"offline"_s)
    throw UseError(u"%1 is server of offline."_s.arg(kTake));
  if (arguments.Has(kTake) == ids.isEmpty()) throw UseError(u"Bij %1 horen nummers van botsingen."_s.arg(kTake));
  if (!ids.isEmpty()) {
    const auto taken = side == u"server"_s ? apply::Side::Server : apply::Side::Offline;
    apply::Settle(database, ids, taken, qEnvironmentVariable("USER"));
  }
  const QList<apply::Conflict> conflicts = apply::ReadConflicts(database, arguments.Has(kAll));
  bool waits = false;
  for (const apply::Conflict& conflict : conflicts) {
    Show(conflict, streams.out);
    waits = waits || conflict.IsWaiting();
  }
  return waits ? kWaits : kDone;
}

}  // namespace

Command ConflictsCommand() {
  return {.name = u"conflicts"_s,
          .usage = u"DATABASE [NUMMER...] [--take KANT] [--all]"_s,
          .summary = u"Toont wat bij het verwerken van exports botste, en kiest wat er blijft."_s,
          .run = ListOrSettle,
          .details =
              u"Toont per record de velden zoals ze waren, zoals het werkstation ze maakte (offline) en zoals ze op\n"
              "de server staan; een ! staat bij wat op beide anders werd. --take server laat de server zoals hij is;\n"
              "--take offline schrijft wat het werkstation wijzigde. De andere versie blijft bewaard: kies later de\n"
              "andere kant om ze terug te halen. --all toont ook wat al gekozen is.\n"
              "Geeft 0 als er niets wacht, 3 als er iets wacht."_s,
          .examples = {u"conflicts /tmp/proef/server/OvalistoServer.mdb"_s}};
}
