// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "tests/windows/Album.h"

// Parts of the pictures of windows. All throw runtime::Error.
namespace windows {

template <class Control>
Control& In(QWidget& window, const QString& name) {
  auto* control = window.findChild<Control*>(name);
  if (control == nullptr) throw runtime::Error(QStringLiteral("geen ") + name);
  return *control;
}

// Changes the current catalogue.
inline void Change(const QString& statement) {
  dao::OpenDatabase(CurrentCatalogue().databasePath).Execute(statement);
}

// Takes a loaded form; `prepare` is called when it is shown.
template <class Shown>
void TakeForm(const Album& album, const QString& name, const QString& selected,
              const std::function<void(QWidget&)>& prepare = {}) {
  global.gstrSelectedID = selected;
  Shown form(nullptr);
  form.Form_Load();
  album.Take(name, form, [&] {
    if (prepare) prepare(form);
  });
}

}  // namespace windows
