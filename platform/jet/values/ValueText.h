// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Value.h"

#include <string>

namespace jet {

// "{00112233-4455-6677-8899-AABBCCDDEEFF}".
std::u16string TextOf(const Guid& guid);

}  // namespace jet
