// SPDX-License-Identifier: MIT
#include "platform/jet/values/Codec.h"

#include "platform/jet/values/Damage.h"

namespace jet {

ByteView Part(ByteView bytes, std::size_t at, std::size_t length) {
  if (at > bytes.size() || length > bytes.size() - at) throw Damage("gegevens reiken buiten hun grenzen");
  return bytes.subspan(at, length);
}

}  // namespace jet
