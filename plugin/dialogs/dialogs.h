#pragma once

// The functions that show a dialog; their result says what the user did. Their one parameter holds
// its items separated by "|"; a missing item is empty, further ones are ignored.

#include "plugin/frame/external_function.h"

// The standard dialog. Kind (number of fields 0 to 4, or 5 for pop-up menus), message, four button
// texts, four labels, number of the password field. Result: the button's code and the four field
// values, each after a "|"; "E" after Escape.
TarvoFunction Do_TarvoDialog;

// The same with fields of the kinds that Do_TarvoSetCustomControls has set.
TarvoFunction Do_TarvoCustomDialog;

// The list-box dialog. Message, four button texts, an unused item, double-click flag,
// selection-required flag, an unused item, multiple-selection flag. Result: the button's code, "|"
// and the chosen lines joined by "|"; "E" after Escape.
TarvoFunction Do_TarvoDoListBox;

// The standard alert. Kind ("0" stop, "1" note, "2" caution, "3" plain), message, explanation,
// texts of the default, the cancel and the other button. Result: "1", "2" or "3" for the button
// pressed, "0" if none was.
TarvoFunction Do_TarvoAlert;
