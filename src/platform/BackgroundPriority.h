#pragma once
// Lowers the priority of the calling thread for work that should only use
// the processor time others leave free, without ever being starved of it:
// on a busy machine it still moves, only slower.

namespace BackgroundPriority {

// For the calling thread only, for good. Does nothing where the system refuses.
void lowerCurrentThread();

} // namespace BackgroundPriority
