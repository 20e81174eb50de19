// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// A queue of sound files that were dropped on a list or an editor. Each becomes a new record, one editor after another.

// Returns those of the dropped files (host paths) that are sound files. If there are others, one box lists them and
// says which files are accepted.
QStringList AcceptedAudio(const QStringList& files);

// Appends files (host paths) to the queue.
void QueueDroppedAudio(const QStringList& files);
// Number of files in the queue.
qsizetype DroppedAudioLeft();
// Removes and returns the first file; a null string when the queue is empty.
QString TakeDroppedAudio();
// Empties the queue.
void ForgetDroppedAudio();
