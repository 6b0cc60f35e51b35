#pragma once

// What the standard and the custom dialog share: the items of their parameter, and the window for a
// number of fields.

#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"

// Stores the items in the dialog state, with iFieldCount and iPasswordField read from them, and
// lets every pop-up menu start with its first item chosen. False, with nothing changed, if memory
// runs out.
bool StoreDialogItems(CFStringRef parameter);

// Shows the dialog with `fields` fields and returns when it has closed; shows none for a number
// that is not 0 to 4.
void ShowDialog(std::int32_t fields);
