#pragma once
#include "platform/runtime/UserMessage.h"
#include "tools/Arguments.h"

#include <ostream>

// What answers the program's questions: the answer, or 0 when the user has not given the option; then a question is a
// runtime::Error that names the option.
struct SessionAnswer {
  QString option;
  int answer = 0;
};

// A station opened as the program opens it at its start, but without windows: settings, paths and mode stand in
// `global`. While it lives, what the program would show as a message goes to `err`, a line or more each. Afterwards
// `global` and the drives are empty.
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
