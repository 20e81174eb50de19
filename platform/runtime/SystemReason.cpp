#include "platform/runtime/SystemReason.h"

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace runtime {

QString SystemReason(int errorNumber) {
  switch (errorNumber) {
    case ENOENT:
    case ENOTDIR:
      return u"het bestaat niet"_s;
    case EACCES:
    case EPERM:
      return u"toegang geweigerd"_s;
    case EROFS:
      return u"de schijf is alleen-lezen"_s;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return u"de schijf is vol"_s;
    case EISDIR:
      return u"het is een map"_s;
    case EEXIST:
      return u"het bestaat al"_s;
    case ENAMETOOLONG:
      return u"de naam is te lang"_s;
    case EIO:
      return u"lees- of schrijffout op de schijf"_s;
    case ETXTBSY:
    case EBUSY:
      return u"het is in gebruik"_s;
    case EMFILE:
    case ENFILE:
      return u"er zijn te veel bestanden open"_s;
    case ETIMEDOUT:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ENETUNREACH:
    case ENOTCONN:
    case ESTALE:
      return u"de schijf is niet bereikbaar"_s;
    default:
      return QString::fromLocal8Bit(std::strerror(errorNumber));
  }
}

}  // namespace runtime
