// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Host path of a file of that name among this user's settings, such as "vensters.ini". It need not exist.
QString UserFile(const QString& name);
