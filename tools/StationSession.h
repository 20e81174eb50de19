// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/UserMessage.h"
#include "tools/Arguments.h"

#include <ostream>

// A question of the planner that a command-line option answers.
struct SessionAnswer {
  QString question;
  QString option;
  bool given = false;  // the option was given, which means yes
};

// A station opened as the planner opens it at its start, but without windows: settings, paths and mode are in `global`.
// While it exists, what the planner would show as a message is written to `err`, one or more lines each; a question
// without an option that answers it is written too and becomes a runtime::Error. Its end clears `global` and the
// drives.
class StationSession {
 public:
  // The first plain word is the program folder, --station the station's number (default 0). Throws runtime::Error for a
  // folder without settings, an invalid number, and a station that does not exist.
  StationSession(const Arguments& arguments, std::ostream& err, const SessionAnswer& answer = {});
  ~StationSession();
  StationSession(const StationSession&) = delete;
  StationSession& operator=(const StationSession&) = delete;

 private:
  runtime::UserMessageScope messages_;
};
