// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/Libpq.h"

#include "platform/runtime/Error.h"

#include <QString>

#include <dlfcn.h>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr char kLibrary[] = "libpq.so.5";

[[noreturn]] void ThrowMissing() {
  const char* reason = dlerror();
  throw runtime::Error(
      u"De bibliotheek libpq, voor een databaseserver, is niet te laden: installeer het pakket libpq5 en start "
      "het programma opnieuw. (%1)"_s.arg(QString::fromLocal8Bit(reason == nullptr ? kLibrary : reason)));
}

// Never closed: connections may exist until the end of the process.
void* Library() {
  static void* const library = [] {
    void* opened = dlopen(kLibrary, RTLD_LAZY | RTLD_LOCAL);
    if (opened == nullptr) ThrowMissing();
    return opened;
  }();
  return library;
}

}  // namespace

LibpqFunction::LibpqFunction(const char* name) : address_(dlsym(Library(), name)) {
  if (address_ == nullptr) ThrowMissing();
}

const LibpqFunctions& Libpq() {
  static const LibpqFunctions functions;
  return functions;
}

}  // namespace dao
