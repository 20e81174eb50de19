#include "tools/DatabaseArgument.h"

#include "platform/jet/database/Database.h"

#include <QFile>
#include <QFileInfo>

dao::Database OpenDatabase(const Arguments& arguments, Purpose purpose) {
  return dao::OpenDatabase(QFileInfo(arguments.Plain().first()).absoluteFilePath(),
                           {arguments.Value(kPassword), purpose == Purpose::Read});
}

std::unique_ptr<jet::Database> OpenFile(const Arguments& arguments) {
  jet::OpenOptions options;
  options.password = arguments.Value(kPassword).toStdU16String();
  return jet::Database::Open(QFile::encodeName(arguments.Plain().first()).toStdString(), options);
}
