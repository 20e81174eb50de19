#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace files {

/// What kind of trouble an Error tells of, for callers that act on it. The text is what a user sees.
enum class ErrorCode {
  Io,                ///< reading, writing or syncing failed
  NotFound,          ///< no such file, table, field or index
  AccessDenied,      ///< no permission, or read-only media
  DiskFull,          ///< no room on the disk
  Unreachable,       ///< the share or drive does not answer
  Locked,            ///< someone else has had the file longer than we wait
  NotADatabase,      ///< not a Jet 4 file, or one of another version
  Password,          ///< the file asks for a password that was not given
  Damaged,           ///< the file contradicts itself
  ForeignWrite,      ///< another program changed the file behind a crashed statement of ours
  Unsupported,       ///< understood, but not to be written by this library
  UnknownCharacter,  ///< an indexed text holds a character whose sort key is not known
  Duplicate,         ///< a key that must be unique is there already
  Required,          ///< a value that must be there is missing
  TooLong,           ///< a text, binary or row is longer than its place
  OutOfRange,        ///< a number that its type cannot hold
  Relation,          ///< an enforced relation between tables would be broken
  Misuse             ///< a call that the caller must not make
};

/// The only exception that this library throws on purpose. The text is Dutch, fit to show a user, and names the file,
/// table or field it is about.
class Error : public std::runtime_error {
 public:
  Error(ErrorCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
  ErrorCode Code() const { return code_; }

 private:
  ErrorCode code_;
};

/// The Error for a failed system call: "Kan het bestand 'NAME' niet DOING: cause." `doing` is an infinitive, such as
/// "lezen"; `errorNumber` an errno value.
Error SystemError(std::string_view doing, const std::string& name, int errorNumber);

}  // namespace files
