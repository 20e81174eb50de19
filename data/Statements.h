// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"

#include <QString>

// The text of every statement with which the planner's windows change the catalogue. The exact texts matter: they are
// exported and executed by the companion tool. Values are not escaped, so a text with a double quote or a NUL character
// throws runtime::Error with the field's name.
namespace statements {

QString InsertItem(const ItemRow& row, const QString& table);
QString UpdateItem(const ItemRow& row, const QString& table);
QString InsertItemSpot(const ItemSpotRow& row, const QString& table);
QString UpdateItemSpot(const ItemSpotRow& row, const QString& table);
QString InsertItemPingle(const ItemPingleRow& row, const QString& table);
QString UpdateItemPingle(const ItemPingleRow& row, const QString& table);
QString InsertLink(const ItemsItemSpotsRow& row, const QString& table);
QString SetAktief(qint32 id, qint32 aktief, const QString& table);
QString ResetAantalGedraaid(qint32 id, const QString& table);
QString Delete(qint32 id, const QString& table, const QString& keyField);
QString DeleteAll(const QString& table);

// The log's form of a statement: apostrophes become "*", double quotes become apostrophes.
QString LogText(const QString& statement);
QString InsertLog(qint32 id, const QString& statement);

}  // namespace statements
