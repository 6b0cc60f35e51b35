#pragma once

// What the standard and the custom dialog have alike: the items of their parameter, and the window
// that a number of fields calls for.

#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"

// Stores the items in the dialog state, with iFieldCount and iPasswordField read from them, and
// lets every pop-up menu start with its first item chosen. False, with nothing changed, where
// memory cannot be had.
bool StoreDialogItems(CFStringRef parameter);

// Shows the dialog with `fields` fields and returns when it has closed; shows none for a number
// that is not 0 to 4.
void ShowDialog(std::int32_t fields);
