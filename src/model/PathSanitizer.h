#pragma once
// Every file or folder name made from user text passes through here, so that
// no name can climb out of its folder or carry characters a file system or a
// shell script would stumble on.

#include <QString>

class PathSanitizer
{
public:
    // Letters, marks and digits of any script plus "-", "_" and "."; every
    // other character becomes "-", runs of "-" collapse, "-" and "." are
    // trimmed from both ends, and an empty result becomes "capture".
    static QString component(const QString &text);

    // Names longer than this many characters are cut, so that a component
    // plus a prefix and an extension stays within every file system's limit.
    static constexpr int maximumLength = 120;
};
