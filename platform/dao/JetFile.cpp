#include "platform/dao/JetFile.h"

#include "platform/runtime/Error.h"

namespace dao {

void JetFile::Tell(const QString& pathText, const QString& hostPath, const jet::Error& error) {
  throw runtime::Error(QString::fromUtf8(error.what()).replace(hostPath, pathText));
}

}  // namespace dao
