#pragma once
// The parts of the demo app that frame its screens: the large navigation
// title, the tab bar, the keyboard and the unexpected Premium sheet.

#include "Canvas.h"
#include "DemoView.h"

namespace DemoChrome {

double contentTop(const ScreenGeometry &g);  // below the large title
double tabBarTop(const ScreenGeometry &g);
double keyboardHeight(const ScreenGeometry &g);

void largeTitle(Canvas &c, const QString &title);
void tabBar(Canvas &c, const DemoView &view);
// The software keyboard; its keys type into the focused field.
void keyboard(Canvas &c, const DemoView &view);
// The full-height offer that covers a screen when the dialog fault is on.
void premiumSheet(Canvas &c, const DemoView &view);

// Small glyphs shared by the screens.
void chevron(Canvas &c, const QPointF &at, const QColor &color, bool pointsLeft = false);
void heart(Canvas &c, const QRectF &box, const QColor &color, bool filled);

} // namespace DemoChrome
