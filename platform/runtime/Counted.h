// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace runtime {

// A count with the Dutch mark for thousands: "51.200".
QString DutchNumber(qint64 count);
// The count and its noun: "1 wijziging", "51.200 wijzigingen".
QString Counted(qint64 count, const QString& one, const QString& many);

}  // namespace runtime
