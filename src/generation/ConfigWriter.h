#pragma once
// The YAML text handed to the command-line generator: the whole project in
// one file. The text is the interface between the two programs, so its shape
// is fixed line for line.

#include "model/ScreenshotProject.h"

#include <QString>

class ConfigWriter
{
public:
    static QString yaml(const ScreenshotProject &project);

    // A double-quoted YAML scalar: backslashes doubled first, then quotes
    // escaped, nothing else touched.
    static QString quoted(const QString &text);
};
