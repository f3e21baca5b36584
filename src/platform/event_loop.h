#pragma once

namespace platform {

// Handles all pending events, painting included, and returns.
void Yield();

}  // namespace platform
