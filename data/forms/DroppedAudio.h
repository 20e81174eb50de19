// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// Sound files that were dropped on a list or an editor and wait to become new records, one editor after the other.

// Of files dropped (host paths), the sound files that can become records. The others are refused in one box that names
// them and says what is accepted.
QStringList AcceptedAudio(const QStringList& files);

// Adds files (host paths) to those that wait.
void QueueDroppedAudio(const QStringList& files);
// How many wait.
qsizetype DroppedAudioLeft();
// The first that waits, which then waits no longer; null when none does.
QString TakeDroppedAudio();
// Forgets those that wait.
void ForgetDroppedAudio();
