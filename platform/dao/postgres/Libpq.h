// SPDX-License-Identifier: MIT
#pragma once

#include <libpq-fe.h>

#include <memory>

namespace dao {

// A function of libpq by its name, converted to the type of the pointer that it initialises.
class LibpqFunction {
 public:
  // Throws runtime::Error when libpq is not installed or lacks the function.
  explicit LibpqFunction(const char* name);
  template <class Function>
  operator Function*() const {
    return reinterpret_cast<Function*>(address_);
  }

 private:
  void* address_;
};

// The functions of libpq that this program calls. The library is loaded when the first server is named, not at the
// start of the program: with the libraries that it needs itself, loading it takes as long as a command on a small file.
struct LibpqFunctions {
  decltype(&::PQclear) PQclear = LibpqFunction("PQclear");
  decltype(&::PQcmdTuples) PQcmdTuples = LibpqFunction("PQcmdTuples");
  decltype(&::PQconnectPoll) PQconnectPoll = LibpqFunction("PQconnectPoll");
  decltype(&::PQconnectStartParams) PQconnectStartParams = LibpqFunction("PQconnectStartParams");
  decltype(&::PQconnectionNeedsPassword) PQconnectionNeedsPassword = LibpqFunction("PQconnectionNeedsPassword");
  decltype(&::PQconninfoFree) PQconninfoFree = LibpqFunction("PQconninfoFree");
  decltype(&::PQconninfoParse) PQconninfoParse = LibpqFunction("PQconninfoParse");
  decltype(&::PQconsumeInput) PQconsumeInput = LibpqFunction("PQconsumeInput");
  decltype(&::PQerrorMessage) PQerrorMessage = LibpqFunction("PQerrorMessage");
  decltype(&::PQescapeLiteral) PQescapeLiteral = LibpqFunction("PQescapeLiteral");
  decltype(&::PQfinish) PQfinish = LibpqFunction("PQfinish");
  decltype(&::PQflush) PQflush = LibpqFunction("PQflush");
  decltype(&::PQfreemem) PQfreemem = LibpqFunction("PQfreemem");
  decltype(&::PQgetResult) PQgetResult = LibpqFunction("PQgetResult");
  decltype(&::PQgetisnull) PQgetisnull = LibpqFunction("PQgetisnull");
  decltype(&::PQgetlength) PQgetlength = LibpqFunction("PQgetlength");
  decltype(&::PQgetvalue) PQgetvalue = LibpqFunction("PQgetvalue");
  decltype(&::PQisBusy) PQisBusy = LibpqFunction("PQisBusy");
  decltype(&::PQntuples) PQntuples = LibpqFunction("PQntuples");
  decltype(&::PQresultErrorField) PQresultErrorField = LibpqFunction("PQresultErrorField");
  decltype(&::PQresultStatus) PQresultStatus = LibpqFunction("PQresultStatus");
  decltype(&::PQsendQuery) PQsendQuery = LibpqFunction("PQsendQuery");
  decltype(&::PQsetErrorVerbosity) PQsetErrorVerbosity = LibpqFunction("PQsetErrorVerbosity");
  decltype(&::PQsetNoticeProcessor) PQsetNoticeProcessor = LibpqFunction("PQsetNoticeProcessor");
  decltype(&::PQsetnonblocking) PQsetnonblocking = LibpqFunction("PQsetnonblocking");
  decltype(&::PQsocket) PQsocket = LibpqFunction("PQsocket");
  decltype(&::PQstatus) PQstatus = LibpqFunction("PQstatus");
};

// Loads libpq at the first call; the library stays loaded. Any thread. Throws runtime::Error when that fails; the next
// call tries it again.
const LibpqFunctions& Libpq();

struct FinishConnection {
  void operator()(PGconn* connection) const { Libpq().PQfinish(connection); }
};
struct ClearResult {
  void operator()(PGresult* result) const { Libpq().PQclear(result); }
};
// The rows or the status that the server returned for one statement.
using Result = std::unique_ptr<PGresult, ClearResult>;

}  // namespace dao
