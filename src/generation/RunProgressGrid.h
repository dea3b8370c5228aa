#pragma once
// The progress of a run as every front shows it: one cell per device and
// language, devices in the project's order and each device's languages in
// the project's order, with the texts that go with them.

#include "RunProgress.h"

#include <QList>
#include <QString>

struct RunProgressCell
{
    QString deviceID;
    QString deviceName;
    QString language;

    QString key() const { return RunProgress::key(language, deviceID); }
    // "iPhone 15 Pro / de-DE"
    QString label() const { return deviceName + QStringLiteral(" / ") + language; }
};

namespace RunProgressText {

// "3/4"
QString count(qint64 completed, qint64 total);
// "3/4 running"
QString summary(const RunProgress &progress);

} // namespace RunProgressText
