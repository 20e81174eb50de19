// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

// What a walk over a shown window finds; each answer tells the controls by class and name.
namespace windows {

// Controls and instruments without an accessible name.
QStringList Nameless(const QWidget& window);

// Instruments, lists, search boxes and buttons without a word on them that have no accessible description.
QStringList Undescribed(const QWidget& window);

// Stops that look the same with the focus and without it.
QStringList Unmarked(QWidget& window, const QList<QWidget*>& stops);

// Letters that more than one button, label, group, tab or menu answers to.
QStringList SharedMnemonics(const QWidget& window);

// Live controls that the user can act on.
QList<QWidget*> Operable(const QWidget& window);

// The controls that Tab reaches, in its order, beginning with the one that has the focus.
QList<QWidget*> TabStops(QWidget& window);

// Live controls that these stops leave out.
QList<QWidget*> Missed(const QWidget& window, const QList<QWidget*>& stops);

// Steps of the round that go against reading: up, or to the left on one line. One is the way back to its beginning.
QStringList AgainstReading(const QList<QWidget*>& order);

QString Told(const QWidget* control);
QStringList Told(const QList<QWidget*>& controls);

}  // namespace windows
