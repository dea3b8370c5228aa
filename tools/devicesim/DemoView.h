#pragma once
// What every demo screen needs to draw itself: the app's session (where it
// stands), its language and region, and the app's colours.

#include "DemoStrings.h"
#include "World.h"

#include <QColor>
#include <QString>

namespace DemoTheme {
inline const QColor tint = QColor("#0f8b8d");
inline const QColor background = QColor("#ffffff");
inline const QColor groupedBackground = QColor("#f2f2f7");
inline const QColor separator = QColor("#c6c6c8");
inline const QColor secondaryText = QColor("#6c6c72");
inline const QColor fieldBackground = QColor("#eeeef0");
inline const QColor inactive = QColor("#8e8e93");
} // namespace DemoTheme

struct DemoView
{
    const AppSession &session;
    DemoStrings::Language language;

    explicit DemoView(const AppSession &s) : session(s), language(DemoStrings::language(s.language)) {}

    QString text(const char *key) const { return DemoStrings::text(language, key); }
    QString locale() const { return session.locale; }
    double scroll(const QString &key) const { return session.scroll.value(key); }
    bool toggle(const QString &name) const;
    // The screen shown on the current tab: "trips", "detail:lisbon", ...
    QString currentScreen() const;
};

namespace DemoDefaults {
// A switch's value before the user has touched it.
bool toggle(const QString &name);
}
