#pragma once
// Waiting the way a device or a build takes time, with two twists for
// tests: DEVICESIM_TIME_SCALE shortens the simulated pauses (0 removes
// them), and a termination request (SIGTERM, SIGINT) ends any pause at
// once by throwing Pause::Interrupted, so that a cancelled build stops
// promptly.

namespace Pause {

struct Interrupted
{
};

// Installs the termination handler; call once at start-up.
void installTerminationHandler();
bool terminationRequested();
// Ends the process the way the pending termination request asked for.
[[noreturn]] void honourTermination();

// DEVICESIM_TIME_SCALE, 1.0 when unset or unreadable.
double timeScale();
// Sleeps `seconds` × the time scale.
void scaled(double seconds);
// Sleeps exactly `seconds` (a slow build must stay slow enough to cancel).
void exact(double seconds);

} // namespace Pause
