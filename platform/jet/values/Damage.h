// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Error.h"

#include <cstdint>
#include <string>
#include <type_traits>

namespace jet {

// The error for a damaged file. `what`: what is wrong, without a full stop; callers prefix page, table and file.
Error Damage(const std::string& what);

// Damage at a page: "pagina 12: what".
Error DamageAt(std::uint32_t page, const std::string& what);

// Runs `work`; a Damaged error from it is rethrown with `context` (a text, or a function that returns one) as prefix.
template <typename Context, typename Work>
decltype(auto) InContext(const Context& context, Work&& work) {
  try {
    return work();
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::Damaged) throw;
    if constexpr (std::is_invocable_v<Context>) {
      throw Damage(context() + error.what());
    } else {
      throw Damage(context + error.what());
    }
  }
}

}  // namespace jet
