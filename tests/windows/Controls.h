// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

// Checks of a shown window; each function returns the faulty controls as class and name.
namespace windows {

// Controls and instruments without an accessible name.
QStringList Nameless(const QWidget& window);

// Names that more than one control that can be operated has.
QStringList SharedNames(const QWidget& window);

// Instruments, lists, search boxes and buttons without a caption that have neither an accessible description nor a
// value as text.
QStringList Undescribed(const QWidget& window);

// Tab stops that look the same with and without the focus.
QStringList Unmarked(QWidget& window, const QList<QWidget*>& stops);

// Mnemonic letters of more than one button, label, group, tab or menu.
QStringList SharedMnemonics(const QWidget& window);

// Visible and enabled controls that the user can operate.
QList<QWidget*> Operable(const QWidget& window);

// The controls that Tab reaches, in order, starting with the one that has the focus.
QList<QWidget*> TabStops(QWidget& window);

// Visible and enabled controls that are missing in `stops`.
QList<QWidget*> Missed(const QWidget& window, const QList<QWidget*>& stops);

// Tab steps against the reading order: up, or to the left on one line. One of them is the return to the start.
QStringList AgainstReading(const QList<QWidget*>& order);

QString Described(const QWidget* control);
QStringList Described(const QList<QWidget*>& controls);

}  // namespace windows
