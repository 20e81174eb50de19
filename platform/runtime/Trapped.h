// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace runtime {

// Shows the exception being handled as a critical message titled with the procedure's name. Call only inside a catch
// block.
void ReportTrapped(const char* procedure) noexcept;

// The error trap of a procedure: runs `body`; an exception is shown to the user and the default is returned instead.
//   bool frmX::Opslaan() { return Trapped(__func__, false, [&] { ...; return true; }); }
template <class Result, class Body>
Result Trapped(const char* procedure, Result defaultResult, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    ReportTrapped(procedure);
  }
  return defaultResult;
}

// The same for a procedure without a result.
//   void frmX::cmdOk_Click() { Trapped(__func__, [&] { ... }); }
template <class Body>
void Trapped(const char* procedure, Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    ReportTrapped(procedure);
  }
}

}  // namespace runtime
