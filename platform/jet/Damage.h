#pragma once

#include <cstdint>
#include <string>

#include "platform/jet/Error.h"

namespace jet {

/// The file contradicts itself. `what` tells what is wrong, without a full stop; the layers above put page, table and
/// file before it.
Error Damage(const std::string& what);

/// Damage at a page: "pagina 12: what".
Error DamageAt(std::uint32_t page, const std::string& what);

}  // namespace jet
