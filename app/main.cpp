// SPDX-License-Identifier: MIT
#include "app/Language.h"
#include "app/Start.h"
#include "app/StartOptions.h"
#include "app/Version.h"
#include "app/WindowPlaces.h"
#include "app/frmMain.h"
#include "data/Globals.h"
#include "data/ProgramLock.h"
#include "export/StationMemory.h"
#include "platform/desktop/EnterKey.h"
#include "platform/desktop/FolderMemory.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/MessageBox.h"
#include "platform/desktop/Theme.h"
#include "platform/desktop/ViewMemory.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/DetachedThread.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int kAlreadyRunning = 1;
constexpr int kWrongUse = 2;

void Print(std::FILE* stream, const QString& text) {
  std::fputs(text.toLocal8Bit().constData(), stream);
}

// --version and --help need no display.
bool IsTextOnly(const StartOptions& options) {
  return options.showVersion || options.showHelp;
}

void PrintText(const StartOptions& options) {
  Print(stdout, options.showHelp ? HelpText() : u"Spotrooster "_s + Version() + u'\n');
}

QStringList ArgumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int at = 1; at < argc; ++at)
    arguments += QString::fromLocal8Bit(argv[at]);
  return arguments;
}

// Looks for --help and --version only: unknown options can be refused only after QApplication removed Qt's own.
bool PrintedTextOnly(int argc, char** argv) {
  StartOptions options;
  const QStringList arguments = ArgumentsOf(argc, argv);
  options.showHelp = arguments.contains(u"--help"_s) || arguments.contains(u"-h"_s);
  options.showVersion = arguments.contains(u"--version"_s) || arguments.contains(u"-v"_s);
  if (IsTextOnly(options)) PrintText(options);
  return IsTextOnly(options);
}

// Host path of a file among this user's settings; it need not exist.
QString UserFile(const QString& name) {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/spotrooster/"_s + name;
}

int Run(QApplication& application, const StartOptions& options) {
  const desktop::Theme theme(application, options.theme);
  const desktop::EnterKey enterKey(application);
  QApplication::setWindowIcon(desktop::AppIcon());
  global.programFolder = runtime::PathText(options.folder);
  const std::unique_ptr<ProgramLock> lock = TakeProgramLock();
  if (!lock) return kAlreadyRunning;
  const WindowPlaces places(UserFile(u"vensters.ini"_s));
  const desktop::FolderMemory folders(UserFile(u"mappen.ini"_s));
  const desktop::ViewMemory views(UserFile(u"lijsten.ini"_s));
  const StationMemory stations(UserFile(u"zenders.ini"_s));
  RegisterScreens();
  const std::unique_ptr<frmMain> main = Start();
  return QApplication::exec();
}

int RunProgram(int argc, char** argv) {
  if (PrintedTextOnly(argc, argv)) return 0;
  QApplication application(argc, argv);
  QApplication::setApplicationName(u"spotrooster"_s);
  QApplication::setApplicationVersion(Version());
  QApplication::setDesktopFileName(u"org.spotrooster.Spotrooster"_s);
  InstallDutchTranslation(application);
  desktop::ShowUserMessagesAsBoxes();
  try {
    return Run(application,
               ParseStartOptions(QApplication::arguments().mid(1), qEnvironmentVariable("SPOTROOSTER_FOLDER"),
                                 QApplication::applicationDirPath()));
  } catch (const runtime::Error& error) {
    Print(stderr, u"spotrooster: "_s + error.Description() + u'\n');
    return kWrongUse;
  }
}

}  // namespace

int main(int argc, char** argv) {
  runtime::KeepTimeZone();
  return runtime::AwaitDetached(RunProgram(argc, argv));
}
