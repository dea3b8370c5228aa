#pragma once
// One generated screenshot that drifted from its recorded reference, or
// that is missing (score 1.0).

#include <QString>

struct ScreenshotValidationIssue
{
    QString filename; // such as 03-Settings.png
    double driftScore = 0; // 0 ... 1
    bool operator==(const ScreenshotValidationIssue &) const = default;
};
