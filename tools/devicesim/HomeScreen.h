#pragma once
// What a device shows when no app is in front (the home screen with the
// installed apps), what a system or unknown app shows (its name over an
// empty list), and the faces of watches and TVs.

#include "Canvas.h"
#include "World.h"

namespace HomeScreen {
// The home screen; its icons carry "launch:<bundle id>" actions.
void draw(Canvas &c, const Device &device);
// Any app other than the demo app: its name as a large title.
void drawPlainApp(Canvas &c, const InstalledApp &app);
}
