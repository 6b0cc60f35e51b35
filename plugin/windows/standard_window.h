#pragma once

// The standard dialog: a movable modal window with a message, one to four buttons and none to four
// fields, built from the dialog state.

#include "platform/carbon/Carbon.h"

// Each shows the dialog with as many fields as its name says and returns when it has closed, with
// the modal loop's status. FieldLC and Field1 to Field4 then hold what the user did; they are as
// they were if no display could show the dialog, or the user's actions did not end it.
OSStatus dialog0();
OSStatus dialog1();
OSStatus dialog2();
OSStatus dialog3();
OSStatus dialog4();
