// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/UserMessage.h"
#include "tools/Arguments.h"

#include <ostream>

// The one question of the program that an option answers, and no other.
struct SessionAnswer {
  QString question;
  QString option;
  bool given = false;  // the option was given, which means yes
};

// A station opened as the program opens it at its start, but without windows: settings, paths and mode stand in
// `global`. While it lives, what the program would show as a message goes to `err`, a line or more each; a question
// that no given option answers goes there too and is a runtime::Error. Afterwards `global` and the drives are empty.
class StationSession {
 public:
  // The first plain word is the program folder, --station the station's number (0 when not told). runtime::Error for a
  // folder without settings, a number that is none, and a station that is not there.
  StationSession(const Arguments& arguments, std::ostream& err, const SessionAnswer& answer = {});
  ~StationSession();
  StationSession(const StationSession&) = delete;
  StationSession& operator=(const StationSession&) = delete;

 private:
  runtime::UserMessageScope messages_;
};
