// SPDX-License-Identifier: MIT
#include "data/Refusal.h"

#include "data/MessageNumbers.h"
#include "data/Text.h"

std::optional<Refusal> CheckText(const QString& text, const QString& label, int longest, const QString& control) {
  if (IsKull(text)) return Refusal{message::kFieldEmpty, label, {}, control};
  if (text.size() > longest) return Refusal{message::kFieldTooLong, label, QString::number(longest), control};
  return std::nullopt;
}
