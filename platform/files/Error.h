// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace files {

// What kind of failure an Error reports, for callers that act on it. One list for this library and for the database
// library above it, whose own kinds are those from NotADatabase on.
enum class ErrorCode {
  Io,                // reading, writing or syncing failed
  NotFound,          // no such file, table, field or index
  AccessDenied,      // no permission, or read-only media
  DiskFull,          // no room on the disk
  Unreachable,       // the share or drive does not respond
  Locked,            // another program has had the file longer than we wait
  Unsupported,       // the file system, or this library, cannot do it
  NotADatabase,      // not a Jet 4 file, or one of another version
  Password,          // the file asks for a password that was not given
  Damaged,           // the file contradicts itself
  NotYetDurable,     // the change is done, but may not survive a power cut
  ForeignWrite,      // another program changed the file behind a crashed statement of ours
  UnknownCharacter,  // an indexed text holds a character whose sort key is not known
  Duplicate,         // a key that must be unique is there already
  Required,          // a value that must be there is missing
  TooLong,           // a text, binary or row is longer than its place
  OutOfRange,        // a number that its type cannot hold
  Relation,          // an enforced relation between tables would be broken
  Misuse             // a call that the caller must not make
};

// The only exception that this library and the database library throw on purpose. The text is Dutch (UTF-8), fit to
// show a user, and names the file, table or field it is about.
class Error : public std::runtime_error {
 public:
  Error(ErrorCode code, const std::string& text, int errorNumber = 0)
      : std::runtime_error(text), code_(code), errorNumber_(errorNumber) {}
  ErrorCode Code() const { return code_; }
  // The errno of the system call that failed; 0 when it was none.
  int ErrorNumber() const { return errorNumber_; }

 private:
  ErrorCode code_;
  int errorNumber_;
};

// The reason for an errno value in Dutch, to follow "... niet lezen: ". The one table of such reasons.
std::string SystemReason(int errorNumber);

// The Error for a failed system call: "Kan het bestand 'NAME' niet DOING: REASON." `doing` is an infinitive, such as
// "lezen".
Error SystemError(std::string_view doing, const std::string& name, int errorNumber);

}  // namespace files
