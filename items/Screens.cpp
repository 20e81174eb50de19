// SPDX-License-Identifier: MIT
#include "items/Screens.h"

#include "data/forms/Screens.h"
#include "items/frmItemsDetail.h"

void RegisterItemScreens() {
  RegisterScreen(Screen::ItemsDetail, [](QWidget* owner) { frmItemsDetail(owner).ShowModal(); });
}
