// SPDX-License-Identifier: MIT
#include "data/ProgramLock.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/FileLock.h"

using namespace Qt::StringLiterals;
using runtime::FileLock;

ProgramLock::ProgramLock(const QString& dataFolder)
    : lock_(std::make_unique<FileLock>(dataFolder + u"\\spotrooster.lock"_s)) {
  if (lock_->What() != FileLock::State::HeldByOther) return;
  throw runtime::Error(
      u"Spotrooster draait al in '%1'. Er kan maar één programma tegelijk in een programmamap werken; "
      u"sluit eerst het andere."_s.arg(dataFolder));
}

ProgramLock::~ProgramLock() = default;
