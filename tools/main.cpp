#include "tools/Commands.h"

#include <QCoreApplication>

#include <iostream>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  return RunCommand(QCoreApplication::arguments().mid(1), {std::cout, std::cerr});
}
