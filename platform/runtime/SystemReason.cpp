// SPDX-License-Identifier: MIT
#include "platform/runtime/SystemReason.h"

#include "platform/files/Error.h"

namespace runtime {

QString SystemReason(int errorNumber) {
  return QString::fromStdString(files::SystemReason(errorNumber));
}

}  // namespace runtime
