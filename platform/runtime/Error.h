// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>
#include <utility>

namespace runtime {

// The only exception that reaches the product: a failure outside the program (a file, a database, a value).
// Description() is a Dutch text for the user that names the thing at fault.
class Error : public std::exception {
 public:
  enum class Outcome {
    Failed,  // nothing was changed
    Done,    // the change is made, but may not survive a power cut
  };

  explicit Error(QString description, Outcome outcome = Outcome::Failed)
      : description_(std::move(description)), utf8_(description_.toUtf8()), outcome_(outcome) {}

  bool IsDone() const noexcept { return outcome_ == Outcome::Done; }
  const QString& Description() const noexcept { return description_; }
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  QString description_;
  QByteArray utf8_;
  Outcome outcome_;
};

}  // namespace runtime
