// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace bench {

// The queries in what a client sent to a PostgreSQL server (simple query protocol), in order.
QList<QByteArray> QueriesIn(const QByteArray& sent);

// The same queries as a script for pgbench, each one round trip. `variables`: whole numbers to replace by variables of
// the script; `settings`: the lines that set these ("\set id random(1, 10)").
QByteArray PgbenchScript(const QList<QByteArray>& queries, const QList<QPair<QString, QString>>& variables,
                         const QByteArray& settings);

}  // namespace bench
