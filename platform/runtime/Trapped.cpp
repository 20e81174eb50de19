// SPDX-License-Identifier: MIT
#include "platform/runtime/Trapped.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/UserMessage.h"

#include <QString>

#include <exception>
#include <new>

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

QString DescriptionOfCurrent() {
  try {
    throw;
  } catch (const Error& error) {
    return error.Description();
  } catch (const std::bad_alloc&) {
    return u"Er is te weinig geheugen vrij."_s;
  } catch (const std::exception& error) {
    return u"Onverwachte fout: %1"_s.arg(QString::fromUtf8(error.what()));
  } catch (...) {
    return u"Onverwachte fout."_s;
  }
}

}  // namespace

void ReportTrapped(const char* procedure) noexcept {
  ShowUserMessage(DescriptionOfCurrent(), kStyleCritical, QString::fromLatin1(procedure));
}

}  // namespace runtime
