// SPDX-License-Identifier: MIT
#pragma once

#include "media/AudioFields.h"

// The common controls in a form's layout.
template <class Layout>
AudioControls ControlsOf(const Layout& ui) {
  return {ui.scrInhoud,   ui.linKnoppen, ui.txtPath, ui.cmdPath,        ui.txtNaam, ui.cmdFillName, ui.txtLengteSec,
          ui.lblLuidheid, ui.chkAktief,  ui.preview, ui.lblToelichting, ui.cmdOk,   ui.cmdAnnuleren};
}
