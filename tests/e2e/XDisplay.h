#pragma once
// A private X11 display for one test: an Xvfb server that picks a free
// display number itself (-displayfd), and xdotool to find windows, move
// them, move the pointer and click, as a person at that desktop would.

#include "E2ESupport.h"

#include <QHash>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

namespace E2E {

class XDisplay
{
public:
    XDisplay();
    ~XDisplay();

    // Why there is no display (Xvfb or xdotool missing, or the server did
    // not start); empty when it runs.
    const QString &problem() const { return m_problem; }
    // ":N", for DISPLAY.
    const QString &name() const { return m_name; }
    QHash<QString, QString> environment() const { return {{QStringLiteral("DISPLAY"), m_name}}; }

    Run xdotool(const QStringList &arguments) const;
    // The visible windows whose WM_CLASS class is `wmClass`, waiting up to
    // `timeoutMs` for at least one to appear.
    QStringList waitForWindows(const QString &wmClass, int timeoutMs = 20000) const;
    // The visible windows whose title matches `titlePattern`, waiting up to
    // `timeoutMs` for at least one to appear.
    QStringList waitForTitle(const QString &titlePattern, int timeoutMs = 20000) const;
    // Whether a visible window's title matches `titlePattern`, now.
    bool hasWindowTitled(const QString &titlePattern) const;
    // Gives `window` the keyboard, then presses `keys` (xdotool's names: "ctrl+s").
    void pressKeys(const QString &window, const QString &keys) const;
    // A window's client area in root coordinates.
    QRect geometry(const QString &window) const;
    // Moves a window and waits until the server has it there.
    bool moveWindow(const QString &window, const QPoint &to) const;
    void click(const QPoint &at) const;
    // Ends the server, as a display that goes away.
    void shutDown();

private:
    QStringList waitForSearch(const QStringList &criteria, int timeoutMs) const;

    QProcess m_server;
    QString m_name;
    QString m_problem;
};

} // namespace E2E
