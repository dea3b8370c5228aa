#pragma once
// The file name of a screen's screenshot: its number with at least two
// digits, "-", the name made safe for a file name, ".png" (03-Settings.png).
// The number prefix keeps the project's order when files are listed.

#include "model/PathSanitizer.h"

#include <QString>

inline QString screenshotFileName(qint64 number, const QString &screenName)
{
    return QStringLiteral("%1-%2.png")
        .arg(number, 2, 10, QLatin1Char('0'))
        .arg(PathSanitizer::component(screenName));
}
