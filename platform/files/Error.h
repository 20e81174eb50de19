// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace files {

// The kind of failure, for callers that act on it. Shared by this library and the database library (platform/jet),
// which alone uses the codes from NotADatabase on.
enum class ErrorCode {
  Io,                // reading, writing or syncing failed
  NotFound,          // no such file, table, field or index
  AccessDenied,      // no permission, or read-only media
  DiskFull,          // no room on the disk
  Unreachable,       // the share or drive does not respond
  Locked,            // another program used the file for longer than the maximum wait
  Unsupported,       // the file system, or this library, cannot do it
  NotADatabase,      // not a Jet 4 file, or one of another version
  Password,          // the password is missing or wrong
  Damaged,           // the content of the file is inconsistent
  NotYetDurable,     // the change is done, but may not survive a power cut
  ForeignWrite,      // another program changed or replaced the file during a change, or before a recovery
  UnknownCharacter,  // an indexed text holds a character whose sort key is not known
  Duplicate,         // a key of a unique index already exists
  Required,          // a required value is missing
  TooLong,           // a text, binary or row exceeds its maximum length
  OutOfRange,        // a number outside the range of its type
  Relation,          // an enforced relation between tables would be broken
  Misuse             // a call that the caller must not make
};

// The only exception that this library and the database library throw deliberately. The text is Dutch (UTF-8), written
// for the user, and names the file, table or field at fault.
class Error : public std::runtime_error {
 public:
  Error(ErrorCode code, const std::string& text, int errorNumber = 0)
      : std::runtime_error(text), code_(code), errorNumber_(errorNumber) {}
  ErrorCode Code() const { return code_; }
  // The errno of the failed system call; 0 when the failure was not a system call.
  int ErrorNumber() const { return errorNumber_; }

 private:
  ErrorCode code_;
  int errorNumber_;
};

// The reason for an errno value in Dutch, to follow "... niet lezen: ".
std::string SystemReason(int errorNumber);

// The Error for a failed system call: "Kan het bestand 'NAME' niet DOING: REASON." `doing` is an infinitive, such as
// "lezen".
Error SystemError(std::string_view doing, const std::string& name, int errorNumber);

}  // namespace files
