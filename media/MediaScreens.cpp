#include "media/MediaScreens.h"

#include "data/Screens.h"
#include "media/frmItemPinglesDetail.h"
#include "media/frmItemSpotsDetail.h"

void RegisterMediaScreens() {
  RegisterScreen(Screen::ItemSpotsDetail, [](QWidget* owner) { frmItemSpotsDetail(owner).ShowModal(); });
  RegisterScreen(Screen::ItemPinglesDetail, [](QWidget* owner) { frmItemPinglesDetail(owner).ShowModal(); });
}
