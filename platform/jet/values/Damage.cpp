// SPDX-License-Identifier: MIT
#include "platform/jet/values/Damage.h"

namespace jet {

Error Damage(const std::string& what) {
  return Error(ErrorCode::Damaged, what);
}

Error DamageAt(std::uint32_t page, const std::string& what) {
  return Damage("pagina " + std::to_string(page) + ": " + what);
}

}  // namespace jet
