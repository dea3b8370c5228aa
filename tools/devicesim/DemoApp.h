#pragma once
// The demo iOS app's behaviour: which screen it shows, how it draws itself
// and what taps, swipes and typed text do to it. The screens themselves are
// in DemoScreens; this is the navigation between them.

#include "Canvas.h"
#include "World.h"

#include <QString>
#include <optional>

namespace DemoApp {

// The screen the dialog fault names: trips, detail, explore, saved, settings.
QString screenId(const AppSession &session);
// True where the status bar sits on a dark photo and is drawn white.
bool prefersLightStatusBar(const AppSession &session);

// Draws the app, with the unexpected Premium sheet over it when `covered`.
void draw(Canvas &c, const AppSession &session, bool covered);

void tap(AppSession &session, const ScreenGeometry &geometry, const QPointF &point);
void swipe(AppSession &session, const ScreenGeometry &geometry, const QPointF &from, const QPointF &to);
// Types into the focused field; returns an error text when nothing has the
// keyboard focus, as the UI-test framework reports it.
std::optional<QString> type(AppSession &session, const QString &text);

// A fresh session's state: the first tab, nothing pushed, default switches.
void reset(AppSession &session);

// What a fresh session shows when its launch arguments ask for a screen, as
// an app prepared for screenshot tools does: "-vantrel.screen explore" opens
// that tab (trips, explore, saved, settings), "-vantrel.screen kyoto" (or
// "detail:kyoto") that trip's page; "-vantrel.sample TEXT" puts TEXT into
// the Explore search. Unknown values leave the first tab.
void applyLaunchState(AppSession &session);

} // namespace DemoApp
