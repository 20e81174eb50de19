// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>

namespace apply {

// The tables that an export changes.
enum class Table { Items, Spots, Jingles, Links };

constexpr std::size_t At(Table table) {
  return static_cast<std::size_t>(table);
}

QString NameOf(Table table);                   // of the server: "tblItems"
QString CopyNameOf(Table table);               // of its copy: "tblCopie_Items"
const QStringList& FieldNamesOf(Table table);  // as the statements name them
QString WordFor(Table table);                  // for users: "item-spot"

// Kept by the studio, never merged: how often and when a spot was aired.
bool IsPlayCount(const QString& field);

}  // namespace apply
