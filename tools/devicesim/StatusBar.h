#pragma once
// The status bar drawn over every screen: the clock, signal, Wi-Fi and
// battery. It shows the real time and a part-used battery unless the
// status bar is overridden (simctl status_bar override), as for App Store
// pictures with 9:41 and a full battery.

#include "Canvas.h"

#include <QMap>

namespace StatusBar {
void draw(Canvas &c, const QMap<QString, QString> &overrides, bool light);
}
