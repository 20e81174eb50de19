#include "platform/desktop/Trapped.h"

#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Error.h"

#include <QString>

#include <exception>
#include <new>

namespace desktop {
namespace {

using namespace Qt::StringLiterals;

constexpr int kCriticalWithOk = 16;

QString DescriptionOfCurrent() {
  try {
    throw;
  } catch (const runtime::Error& error) {
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
  ShowMessageBox(nullptr, DescriptionOfCurrent(), kCriticalWithOk, QString::fromLatin1(procedure));
}

}  // namespace desktop
