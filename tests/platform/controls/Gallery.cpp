// SPDX-License-Identifier: MIT
// Paints sample windows with every control to picture files, for visual review: Gallery FOLDER [light|dark]
// With Qt's scale factor: QT_SCALE_FACTOR=1.5 Gallery /tmp/pictures dark
#include "platform/desktop/MessageDialog.h"
#include "platform/desktop/Theme.h"
#include "tests/platform/controls/Samples.h"

#include <QApplication>
#include <QDir>
#include <QFontDatabase>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

void Shoot(QWidget& window, const QString& folder, const QString& name) {
  window.show();
  for (int i = 0; i < 5; ++i)
    QCoreApplication::processEvents();
  window.grab().save(folder + u'/' + name + u".png"_s);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2) return 2;
  QApplication::setFont(QFont(u"Inter"_s, 10));
  const QString variant = arguments.value(2, u"light"_s);
  const desktop::Theme theme(application, desktop::VariantFromText(variant));
  const QString& folder = arguments[1];
  QDir().mkpath(folder);
  const QString suffix = u"-"_s + variant + u"-"_s + QString::number(application.devicePixelRatio());

  const std::vector<std::pair<QString, QWidget*>> windows{
      {u"list"_s, samples::MakeList()},
      {u"empty"_s, samples::MakeEmptyList()},
      {u"editor"_s, samples::MakeEditor()},
      {u"item"_s, samples::MakeItem()},
      {u"settings"_s, samples::MakeSettings()},
      {u"main"_s, samples::MakeMain()},
      {u"busy"_s, samples::MakeBusy()},
      {u"icons"_s, samples::MakeIcons()},
      {u"menu"_s, samples::MakeMenu()},
      {u"choices"_s, samples::MakeChoices()},
      {u"calendar"_s, samples::MakeCalendar()},
      {u"question"_s, new desktop::MessageDialog(
                          nullptr, u"De gegevens zijn gewijzigd.\r\nWilt u de wijzigingen bewaren?"_s, 36, u"Items"_s)},
      {u"error"_s,
       new desktop::MessageDialog(
           nullptr,
           u"De tabel ‘tblItemSpots’ kan niet worden bijgewerkt: het bestand \\\\studio\\ovalisto\\data\\OvalistoServer3.mdb is niet bereikbaar."_s,
           16, u"Update_tblItemSpots"_s)},
      {u"warning"_s, new desktop::MessageDialog(nullptr, u"Let op."_s, 48, u"Items"_s)},
      {u"choice"_s, new desktop::MessageDialog(nullptr, u"Bewaren?"_s, 35, u"Items"_s)},
  };
  for (const auto& [name, window] : windows) {
    const std::unique_ptr<QWidget> owned(window);
    Shoot(*owned, folder, name + suffix);
  }
  return 0;
}
