// SPDX-License-Identifier: MIT
#include "data/Refusal.h"

#include "data/Text.h"

std::optional<Refusal> CheckText(const QString& text, const QString& label, int longest, const QString& control) {
  if (IsKull(text)) return Refusal{1500, label, {}, control};
  if (text.size() > longest) return Refusal{1506, label, QString::number(longest), control};
  return std::nullopt;
}
