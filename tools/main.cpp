// SPDX-License-Identifier: MIT
#include "tools/Commands.h"
#include "tools/VisibleStream.h"

#include <QCoreApplication>

#include <unistd.h>

#include <iostream>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const VisibleOnTerminal out(std::cout, STDOUT_FILENO);
  const VisibleOnTerminal err(std::cerr, STDERR_FILENO);
  return RunCommand(QCoreApplication::arguments().mid(1), {std::cout, std::cerr});
}
