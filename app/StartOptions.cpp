// SPDX-License-Identifier: MIT
#include "app/StartOptions.h"

#include "platform/runtime/Error.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

// The value of the option at `at`, written "--option value" or "--option=value"; advances `at`. Null for another
// option.
QString ValueOf(const QStringList& arguments, qsizetype& at, const QString& option) {
  const QString& argument = arguments[at];
  if (argument.startsWith(option + u'=')) return argument.mid(option.size() + 1) + u""_s;
  if (argument != option) return {};
  if (at + 1 >= arguments.size()) throw runtime::Error(u"De optie %1 heeft een waarde nodig."_s.arg(option));
  return arguments[++at] + u""_s;
}

desktop::Variant ThemeOf(const QString& text) {
  const auto variant = desktop::VariantFromText(text);
  if (!variant) throw runtime::Error(u"De optie --theme is light of dark, niet '%1'."_s.arg(text));
  return *variant;
}

}  // namespace

StartOptions ParseStartOptions(const QStringList& arguments, const QString& environmentFolder,
                               const QString& ownFolder) {
  StartOptions options;
  options.folder = environmentFolder.isEmpty() ? ownFolder : environmentFolder;
  for (qsizetype at = 0; at < arguments.size(); ++at) {
    if (arguments[at] == u"--version"_s || arguments[at] == u"-v"_s) {
      options.showVersion = true;
    } else if (arguments[at] == u"--help"_s || arguments[at] == u"-h"_s) {
      options.showHelp = true;
    } else if (const QString folder = ValueOf(arguments, at, u"--folder"_s); !folder.isNull()) {
      options.folder = folder;
    } else if (const QString theme = ValueOf(arguments, at, u"--theme"_s); !theme.isNull()) {
      options.theme = ThemeOf(theme);
    } else {
      throw runtime::Error(u"Onbekende optie: %1"_s.arg(arguments[at]));
    }
  }
  options.folder = QDir::cleanPath(QDir(options.folder).absolutePath());
  return options;
}

QString HelpText() {
  return u"Spotrooster, planning van radioreclame\n"
         "\n"
         "  spotrooster [opties]\n"
         "\n"
         "  --folder MAP         de programmamap met ovalis.ini en de map data; anders die van SPOTROOSTER_FOLDER,\n"
         "                       anders de map van het programma zelf\n"
         "  --theme light|dark   licht of donker; anders wat het bureaublad wil\n"
         "  --version            toont de versie\n"
         "  --help               toont deze tekst\n"_s;
}
