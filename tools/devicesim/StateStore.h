#pragma once
// The state folder (DEVICESIM_HOME): "state.json" holds the World, a lock
// file serialises the short-lived devicesim processes that read and change
// it (an xcodebuild replay runs while other simctl calls come in, so the
// lock is taken per action, never for a whole run).

#include "World.h"

#include <QString>
#include <functional>

namespace StateStore {

// DEVICESIM_HOME, or a folder in the temporary directory when it is unset.
QString home();
QString statePath();

// Loads the world (creating the default one on first use), lets `change`
// act on it and saves it, all under the lock. A ToolFailure thrown by
// `change` leaves the saved state as it was.
void modify(const std::function<void(World &)> &change);
// Loads the world under the lock, without saving.
World read();
// Replaces the state with the default world.
void reset();

} // namespace StateStore
