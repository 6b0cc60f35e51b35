#pragma once

// The list-box dialog: a movable modal window with a message, a list and one to four buttons, built
// from its texts and the dialog state.

#include <array>

#include "platform/carbon/Carbon.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "plugin/state/dialog_state.h"

// Shows the lines of the dialog state under `message`, with button 1 and each other button that has
// a text, and returns when the dialog has closed, with the modal loop's status. FieldLC and Field1
// then hold what the user did; they are as they were if no display could show the dialog, or the
// user's actions did not end it.
OSStatus RunListWindow(CFStringRef message,
                       const std::array<CFStringRef, kFamilySize>& button_texts);
