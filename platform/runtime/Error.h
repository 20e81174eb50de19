#pragma once
#include <QString>

#include <exception>
#include <utility>

namespace runtime {

// The only exception that reaches the product: something the world did to us (a file, a database, a value).
// Description() is fit to show a user and names the thing at fault.
class Error : public std::exception {
 public:
  explicit Error(QString description) : description_(std::move(description)), utf8_(description_.toUtf8()) {}

  const QString& Description() const noexcept { return description_; }
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  QString description_;
  QByteArray utf8_;
};

}  // namespace runtime
