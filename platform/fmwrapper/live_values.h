#pragma once

namespace fmx {

// Values that were constructed and not deleted.
long CountLiveValues();

}  // namespace fmx
