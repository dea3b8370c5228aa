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

    // File systems limit a name to 255 bytes, not characters: a component
    // longer than this many bytes of UTF-8 is cut on a character boundary,
    // so that it stays within the limit with the longest prefix and
    // extension it gets (a snapshot's "before-new-project-" and time stamp).
    static constexpr int maximumBytes = 200;
};
