// SPDX-License-Identifier: MIT
#include "tools/Commands.h"

#include "platform/audio/Error.h"
#include "platform/jet/values/Error.h"
#include "platform/runtime/Error.h"
#include "tools/ManualPage.h"

#include <algorithm>
#include <exception>
#include <new>
#include <string>

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
  out << "\nspotrooster-db OPDRACHT --help, of spotrooster-db help OPDRACHT, toont meer, met voorbeelden.\n"
         "Exitcode: 0 gelukt, 1 mislukt, 2 verkeerd gebruikt, 3 gelukt, maar iets wacht op een beslissing.\n";
}

void ShowHelpOf(const Command& command, std::ostream& out) {
  out << "gebruik: " << Utf8(CallOf(command)) << "\n\n" << Utf8(command.summary) << "\n";
  if (!command.details.isEmpty()) out << "\n" << Utf8(command.details) << "\n";
  out << "\nvoorbeelden, op de zender van 'spotrooster-db demo /tmp/proef':\n";
  for (const QString& example : command.examples)
    out << "  spotrooster-db " << Utf8(example) << "\n";
}

bool AsksForHelp(const QStringList& words) {
  return words.contains(u"--help"_s) || words.contains(u"-h"_s);
}

// "help" and "help OPDRACHT" are "--help" and "OPDRACHT --help".
QStringList WithoutHelpWord(const QStringList& words) {
  if (words.isEmpty() || words.first() != u"help"_s) return words;
  return words.mid(1) + QStringList{u"--help"_s};
}

int Run(const Command& command, const QStringList& words, const Streams& streams) {
  try {
    const Usage usage = Usage::Of(command.usage);
    const Arguments arguments(words, usage);
    if (usage.Allows(arguments.Plain().size())) return command.run(arguments, streams);
  } catch (const UseError& error) {
    streams.err << Utf8(error.Description()) << "\n";
  } catch (const runtime::Error& error) {
    streams.err << Utf8(error.Description()) << "\n";
    return kFailed;
  } catch (const jet::Error& error) {
    streams.err << error.what() << "\n";
    return kFailed;
  } catch (const audio::Error& error) {
    streams.err << error.what() << "\n";
    return kFailed;
  } catch (const std::bad_alloc&) {
    streams.err << "Er is te weinig geheugen voor deze opdracht.\n";
    return kFailed;
  } catch (const std::exception& error) {
    streams.err << "De opdracht is afgebroken door een onverwachte fout: " << error.what() << "\n";
    return kFailed;
  }
  streams.err << "gebruik: " << Utf8(CallOf(command)) << "\n";
  return kWrongUse;
}

}  // namespace

QList<Command> AllCommands() {
  return {CreateCommand(),  DemoCommand(),      TablesCommand(),  SchemaCommand(),  DumpCommand(),    SqlCommand(),
          MeasureCommand(), CheckCommand(),     CompactCommand(), RestoreCommand(), CopyCommand(),    ExportCommand(),
          ApplyCommand(),   ConflictsCommand(), SpotsCommand(),   LocateCommand(),  PlayoutCommand(), PlayedCommand()};
}

int RunCommand(const QStringList& given, const Streams& streams) {
  const QStringList words = WithoutHelpWord(given);
  if (!words.isEmpty() && words.first() == u"--man"_s) {
    WriteManualPage(streams.out);
    return kDone;
  }
  if (words.isEmpty() || AsksForHelp(words.first(1))) {
    ShowHelp(words.isEmpty() ? streams.err : streams.out);
    return words.isEmpty() ? kWrongUse : kDone;
  }
  const QList<Command> commands = AllCommands();
  const auto command = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command& candidate) { return candidate.name == words.first(); });
  if (command == commands.end()) {
    streams.err << Utf8(u"De opdracht '%1' bestaat niet; spotrooster-db --help noemt ze allemaal."_s.arg(words.first()))
                << "\n";
    return kWrongUse;
  }
  if (AsksForHelp(words)) {
    ShowHelpOf(*command, streams.out);
    return kDone;
  }
  const int result = Run(*command, words.mid(1), streams);
  if (streams.out.flush()) return result;
  streams.err << "De uitvoer kan niet geschreven worden.\n";
  return kFailed;
}
