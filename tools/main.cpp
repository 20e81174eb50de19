// SPDX-License-Identifier: MIT
#include "platform/runtime/Clock.h"
#include "platform/runtime/DetachedThread.h"
#include "tools/Commands.h"
#include "tools/VisibleStream.h"

#include <QCoreApplication>

#include <unistd.h>

#include <iostream>

namespace {

int RunProgram(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const VisibleOnTerminal out(std::cout, STDOUT_FILENO);
  const VisibleOnTerminal err(std::cerr, STDERR_FILENO);
  return RunCommand(QCoreApplication::arguments().mid(1), {std::cout, std::cerr});
}

}  // namespace

int main(int argc, char** argv) {
  runtime::KeepTimeZone();
  return runtime::AwaitDetached(RunProgram(argc, argv));
}
