#include "tools/Commands.h"

#include "platform/audio/Error.h"
#include "platform/jet/Error.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

std::string Utf8(const QString& text) {
  return text.toStdString();
}

QString CallOf(const Command& command) {
  return u"spotrooster-db "_s + command.name + u' ' + command.usage;
}

void ShowHelp(std::ostream& out) {
  out << "spotrooster-db: onderhoud van de databases van Spotrooster\n\n";
  for (const Command& command : AllCommands())
    out << "  " << Utf8(CallOf(command)) << "\n      " << Utf8(command.summary) << "\n";
  out << "\nspotrooster-db OPDRACHT --help toont meer, met voorbeelden.\n"
         "Uitgang: 0 gelukt, 1 mislukt, 2 verkeerd gebruikt.\n";
}

void ShowHelpOf(const Command& command, std::ostream& out) {
  out << "gebruik: " << Utf8(CallOf(command)) << "\n\n" << Utf8(command.summary) << "\n";
  if (!command.details.isEmpty()) out << "\n" << Utf8(command.details) << "\n";
  out << "\nvoorbeelden:\n";
  for (const QString& example : command.examples)
    out << "  spotrooster-db " << Utf8(example) << "\n";
}

bool AsksForHelp(const QStringList& words) {
  return words.contains(u"--help"_s) || words.contains(u"-h"_s);
}

bool HasFittingWords(const Command& command, const Arguments& arguments) {
  const qsizetype count = arguments.Plain().size();
  return count >= command.leastWords && (command.mostWords < 0 || count <= command.mostWords);
}

int Run(const Command& command, const QStringList& words, const Streams& streams) {
  try {
    const Arguments arguments(words, command.valuedOptions, command.flags);
    if (HasFittingWords(command, arguments)) return command.run(arguments, streams);
  } catch (const runtime::Error& error) {
    streams.err << Utf8(error.Description()) << "\n";
    return kFailed;
  } catch (const jet::Error& error) {
    streams.err << error.what() << "\n";
    return kFailed;
  } catch (const audio::Error& error) {
    streams.err << error.what() << "\n";
    return kFailed;
  }
  streams.err << "gebruik: " << Utf8(CallOf(command)) << "\n";
  return kWrongUse;
}

}  // namespace

QList<Command> AllCommands() {
  return {CreateCommand(), DemoCommand(),    TablesCommand(), SchemaCommand(),  DumpCommand(),
          SqlCommand(),    MeasureCommand(), CheckCommand(),  CompactCommand(), RestoreCommand(),
          ExportCommand(), SpotsCommand(),   LocateCommand()};
}

int RunCommand(const QStringList& words, const Streams& streams) {
  if (words.isEmpty() || AsksForHelp(words.first(1))) {
    ShowHelp(words.isEmpty() ? streams.err : streams.out);
    return words.isEmpty() ? kWrongUse : kDone;
  }
  const QList<Command> commands = AllCommands();
  const auto command = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command& candidate) { return candidate.name == words.first(); });
  if (command == commands.end()) {
    streams.err << Utf8(u"De opdracht '%1' bestaat niet."_s.arg(words.first())) << "\n\n";
    ShowHelp(streams.err);
    return kWrongUse;
  }
  if (AsksForHelp(words)) {
    ShowHelpOf(*command, streams.out);
    return kDone;
  }
  return Run(*command, words.mid(1), streams);
}
