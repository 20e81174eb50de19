// SPDX-License-Identifier: MIT
#include "app/Language.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

void InstallDutchTranslation(QApplication& application) {
  QLocale::setDefault(QLocale(QLocale::Dutch, QLocale::Belgium));
  auto dutch = std::make_unique<QTranslator>(&application);
  if (!dutch->load(u"qtbase_nl"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) return;
  QApplication::installTranslator(dutch.release());
}
