// SPDX-License-Identifier: MIT
#include "data/BasisLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace basis {
namespace {

// Not the form of Encode.
struct OtherForm {};

class Scanner {
 public:
  explicit Scanner(QByteArrayView text) : text_(text) {}

  bool Took(QByteArrayView expected) {
    if (!text_.sliced(at_).startsWith(expected)) return false;
    at_ += expected.size();
    return true;
  }
  void Expect(QByteArrayView expected) {
    if (!Took(expected)) throw OtherForm();
  }
  bool AtEnd() const { return at_ == text_.size(); }
  qsizetype At() const { return at_; }
  QByteArrayView From(qsizetype start) const { return text_.sliced(start, at_ - start); }

  template <class One>
  void Array(const One& one) {
    Expect("[");
    if (Took("]")) return;
    do {
      one();
    } while (Took(","));
    Expect("]");
  }

  QString Text() {
    Expect("\"");
    const qsizetype start = at_;
    while (at_ < text_.size() && text_[at_] != '"' && text_[at_] != '\\')
      ++at_;
    QByteArray bytes = text_.sliced(start, at_ - start).toByteArray();
    while (!Took("\"")) {
      if (at_ >= text_.size()) throw OtherForm();
      bytes += text_[at_] == '\\' ? Escaped() : text_[at_++];
    }
    return QString::fromUtf8(bytes);
  }

  qint64 Whole() {
    const dao::Value value = Number();
    const auto* whole = std::get_if<std::int64_t>(&value);
    if (whole == nullptr) throw OtherForm();
    return *whole;
  }

  dao::Value Value() {
    if (at_ >= text_.size()) throw OtherForm();
    if (text_[at_] == '"') return Text().toStdU16String();
    if (Took("null")) return {};
    return Number();
  }

 private:
  char Escaped() {
    constexpr QByteArrayView kLetters = "\"\\/bfnrt";
    constexpr QByteArrayView kMeant = "\"\\/\b\f\n\r\t";
    const qsizetype letter = at_ + 1 < text_.size() ? kLetters.indexOf(text_[at_ + 1]) : -1;
    if (letter < 0) throw OtherForm();  // \u
    at_ += 2;
    return kMeant[letter];
  }

  // A number with a fraction or an exponent is the JSON reader's when it is whole all the same.
  dao::Value Number() {
    const char* const first = text_.data() + at_;
    const char* const last = text_.data() + text_.size();
    std::int64_t whole = 0;
    const auto [end, error] = std::from_chars(first, last, whole);
    const bool isWhole = error == std::errc() && (end == last || (*end != '.' && *end != 'e' && *end != 'E'));
    if (isWhole) {
      at_ += end - first;
      return whole;
    }
    double number = 0;
    const auto [numberEnd, numberError] = std::from_chars(first, last, number);
    if (numberError != std::errc() || !std::isfinite(number) || number == std::floor(number)) throw OtherForm();
    at_ += numberEnd - first;
    return number;
  }

  QByteArrayView text_;
  qsizetype at_ = 0;
};

QList<Row> ReadRows(Scanner& scanner, std::size_t fieldCount) {
  QList<Row> rows;
  scanner.Array([&] {
    Row row;
    row.reserve(fieldCount);
    scanner.Array([&] { row.push_back(scanner.Value()); });
    rows.append(std::move(row));
  });
  return rows;
}

bool HaveSize(const QList<Row>& rows, qsizetype size) {
  return std::ranges::all_of(rows, [&](const Row& row) { return static_cast<qsizetype>(row.size()) == size; });
}

}  // namespace

// The keys are in the order of the alphabet, as a JSON object writes them.
std::optional<Entry> LineReader::Read(const QByteArray& line) {
  if (!line.isValidUtf8()) return std::nullopt;
  try {
    Scanner scanner(line);
    Entry entry;
    const auto fieldCount = static_cast<std::size_t>(fields_.size());
    scanner.Expect("{\"after\":");
    entry.after = ReadRows(scanner, fieldCount);
    scanner.Expect(",\"before\":");
    entry.before = ReadRows(scanner, fieldCount);
    scanner.Expect(",\"fields\":");
    const qsizetype start = scanner.At();
    if (fieldsText_.isEmpty() || !scanner.Took(fieldsText_)) {
      fields_.clear();
      scanner.Array([&] { fields_ += scanner.Text(); });
      fieldsText_ = scanner.From(start).toByteArray();
    }
    entry.fields = fields_;
    scanner.Expect(",\"key\":");
    entry.key = scanner.Whole();
    scanner.Expect(",\"keyField\":");
    entry.keyField = scanner.Text();
    scanner.Expect(",\"references\":");
    scanner.Array([&] {
      scanner.Expect("[");
      Reference reference;
      reference.table = scanner.Text();
      scanner.Expect(",");
      reference.id = scanner.Whole();
      scanner.Expect(",");
      reference.fingerprint = scanner.Text();
      scanner.Expect("]");
      entry.references.append(reference);
    });
    scanner.Expect(",\"table\":");
    entry.table = scanner.Text();
    scanner.Expect("}");
    const bool isWhole =
        scanner.AtEnd() && HaveSize(entry.before, fields_.size()) && HaveSize(entry.after, fields_.size());
    return isWhole ? std::optional(std::move(entry)) : std::nullopt;
  } catch (const OtherForm&) {
    return std::nullopt;
  }
}

}  // namespace basis
