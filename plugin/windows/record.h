#pragma once

#include <cstddef>

#include "platform/carbon/Carbon.h"

// Recording how a dialog ended. The caller closes it.

// Button `index` (from 0): records its code and the value of every field, or the chosen lines.
void RecordButton(std::size_t index);

// Escape: records "E" and empty fields.
void RecordCancel();

// A double click on `row` of the list: records the code of button 1, and that row as the only
// choice.
void RecordRow(ListHandle list, Cell row);
