#pragma once

#include "platform/carbon/Carbon.h"

// The command handler of every dialog window. It keeps pop-up choices, makes the radio buttons one
// group and watches the list while a dialog runs; on a button, Escape or a double click in the list
// it records the outcome in FieldLC and Field1 to Field4 and ends the dialog. Returns
// eventNotHandledErr whatever it did, so that the platform's own handling goes on.
OSStatus ButtonHandler(EventHandlerCallRef call, EventRef event, void* user_data);
