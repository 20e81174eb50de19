// SPDX-License-Identifier: MIT
#include "catalogue/Screens.h"

#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/forms/Screens.h"

namespace {

template <class Dialog>
void Show(QWidget* owner) {
  Dialog form(owner);
  form.ShowModal();
}

}  // namespace

void RegisterCatalogueScreens() {
  RegisterScreen(Screen::Items, Show<frmItems>);
  RegisterScreen(Screen::ItemSpots, Show<frmItemSpots>);
  RegisterScreen(Screen::ItemPingles, Show<frmItemPingles>);
  RegisterScreen(Screen::ItemOpruimen, Show<frmItemOpruimen>);
  RegisterScreen(Screen::ItemSpotOpruimen, Show<frmItemSpotOpruimen>);
}

void ShowItemSpotsOnly(SpotView view, QWidget* owner) {
  frmItemSpots form(owner);
  form.ShowOnly(view);
  form.ShowModal();
}
