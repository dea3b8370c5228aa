#pragma once
// The screens of the demo app, each drawn (and made tappable) on a Canvas:
// the trip list, a trip's detail, Explore with its search field, the map of
// saved places and the settings.

#include "Canvas.h"
#include "DemoTrips.h"
#include "DemoView.h"

namespace DemoScreens {
void trips(Canvas &c, const DemoView &view);
void detail(Canvas &c, const DemoView &view, const DemoTrip &trip);
void explore(Canvas &c, const DemoView &view);
void saved(Canvas &c, const DemoView &view);
void settings(Canvas &c, const DemoView &view);
}
