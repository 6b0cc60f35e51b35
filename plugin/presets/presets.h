#pragma once

// The functions that preset what the next dialogs show. They write into the dialog state and return
// at once. A parameter that cannot be used gives an error token (external_function.h) as the
// result.

#include "plugin/frame/external_function.h"

// The caption of every dialog window from now on. Result: the caption.
TarvoFunction Do_TarvoSetCaption;

// What the four fields of the next dialog start with, separated by "|". Result: the parameter.
TarvoFunction Do_TarvoPreEnterText;

// Left and top edge of the next dialog's content on the screen, separated by "|". Result: "0".
TarvoFunction Do_TarvoPosition;

// The number of the field that has the focus when the next dialog opens. Result: the parameter.
TarvoFunction Do_TarvoSetFocus;

// A number above 0 lets Escape cancel the next dialog. Result: "1" if it may now, otherwise "0".
TarvoFunction Do_TarvoAllowEscape;

// The kinds of the four fields of every custom dialog from now on, as numbers separated by "|".
// Result: the parameter.
TarvoFunction Do_TarvoSetCustomControls;

// The pop-up menus of the four fields from now on, separated by "|", their items by carriage
// returns. Result: the number of menus.
TarvoFunction Do_TarvoPopUps;

// The lines of every list-box dialog from now on, separated by carriage returns. Result: their
// number.
TarvoFunction Do_TarvoFillListBox;
