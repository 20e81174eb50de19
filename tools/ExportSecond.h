#pragma once
#include <QString>

#include <chrono>
#include <functional>

// An export file is called after its second, and one of the same second would take its place. These wait for a second
// that no other export has.

// How they wait; the default sleeps.
using Sleep = std::function<void(std::chrono::milliseconds)>;
void SleepFor(std::chrono::milliseconds time);

// Until no file of the present second is in the folder (path text).
void WaitForFreeSecond(const QString& folder, const Sleep& sleep = SleepFor);
// Until the second after which this file is called is over.
void WaitOutSecond(const QString& path, const Sleep& sleep = SleepFor);
