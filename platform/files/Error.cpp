// SPDX-License-Identifier: MIT
#include "platform/files/Error.h"

#include <cerrno>
#include <cstring>

namespace files {
namespace {

struct Reason {
  int errorNumber;
  ErrorCode code;
  const char* text;
};

constexpr Reason kReasons[] = {
    {EACCES, ErrorCode::AccessDenied, "toegang geweigerd"},
    {EPERM, ErrorCode::AccessDenied, "toegang geweigerd"},
    {EROFS, ErrorCode::AccessDenied, "de schijf is alleen-lezen"},
    {EBADF, ErrorCode::AccessDenied, "het bestand is alleen-lezen geopend"},
    {ENOENT, ErrorCode::NotFound, "het bestand of de map bestaat niet"},
    {ENOTDIR, ErrorCode::NotFound, "de map bestaat niet"},
    {EEXIST, ErrorCode::Io, "het bestand bestaat al"},
    {EISDIR, ErrorCode::Io, "het is een map"},
    {ENXIO, ErrorCode::Io, "het is geen gewoon bestand"},
    {ELOOP, ErrorCode::Io, "het is een symbolische koppeling"},
    {ENOSPC, ErrorCode::DiskFull, "de schijf is vol"},
    {EDQUOT, ErrorCode::DiskFull, "de toegestane schijfruimte is op"},
    {EFBIG, ErrorCode::DiskFull, "het bestand wordt te groot"},
    {EIO, ErrorCode::Io, "lees- of schrijffout op de schijf"},
    {EMFILE, ErrorCode::Io, "er zijn te veel bestanden geopend"},
    {ENFILE, ErrorCode::Io, "er zijn te veel bestanden geopend"},
    {ETXTBSY, ErrorCode::Locked, "een ander programma heeft het exclusief geopend"},
    {EBUSY, ErrorCode::Locked, "een ander programma heeft het exclusief geopend"},
    {ESTALE, ErrorCode::Unreachable, "de schijf of netwerkmap is niet bereikbaar"},
    {ENOTCONN, ErrorCode::Unreachable, "de schijf of netwerkmap is niet bereikbaar"},
    {EHOSTDOWN, ErrorCode::Unreachable, "de schijf of netwerkmap is niet bereikbaar"},
    {EHOSTUNREACH, ErrorCode::Unreachable, "de schijf of netwerkmap is niet bereikbaar"},
    {ENETUNREACH, ErrorCode::Unreachable, "de schijf of netwerkmap is niet bereikbaar"},
    {ETIMEDOUT, ErrorCode::Unreachable, "de schijf of netwerkmap is niet bereikbaar"},
    {ENOLCK, ErrorCode::Unsupported, "de schijf of netwerkmap kent geen vergrendeling"},
    {ENOSYS, ErrorCode::Unsupported, "de schijf of netwerkmap kan dit niet"},
    {ENOTSUP, ErrorCode::Unsupported, "de schijf of netwerkmap kan dit niet"},
    {ENAMETOOLONG, ErrorCode::NotFound, "de naam is te lang"},
};

const Reason* Find(int errorNumber) {
  for (const Reason& known : kReasons) {
    if (known.errorNumber == errorNumber) return &known;
  }
  return nullptr;
}

}  // namespace

std::string SystemReason(int errorNumber) {
  if (const Reason* known = Find(errorNumber)) return known->text;
  return "systeemfout " + std::to_string(errorNumber) + " (" + std::strerror(errorNumber) + ")";
}

Error SystemError(std::string_view doing, const std::string& name, int errorNumber) {
  const Reason* known = Find(errorNumber);
  if (errorNumber == ENOENT && (doing == "openen" || doing == "lezen")) {
    return Error(ErrorCode::NotFound, "Het bestand '" + name + "' bestaat niet.", errorNumber);
  }
  return Error(known != nullptr ? known->code : ErrorCode::Io,
               "Kan het bestand '" + name + "' niet " + std::string(doing) + ": " + SystemReason(errorNumber) + ".",
               errorNumber);
}

}  // namespace files
