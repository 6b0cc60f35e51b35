#pragma once

#include "platform/corefoundation/CoreFoundation.h"

namespace corefoundation {

// Deletes a bundle that nobody holds any more, and what it has read.
void DeleteBundle(CFBundle* bundle);

}  // namespace corefoundation
