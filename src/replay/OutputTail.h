#pragma once
// A tool's complaint in a message is kept to its end: a tool that writes
// megabytes to standard error must not make a message of megabytes. The end
// holds the reason (tools print it last); the whole text goes to the run log.

#include <QString>

namespace OutputTail {

constexpr qsizetype maximumBytes = 4096;

// `text` when it takes at most 4 KB of UTF-8; otherwise a line that says
// how much was left out, then (at most) the last 4 KB, beginning with a
// whole line where there is a line break, else with a whole character.
QString of(const QString &text);

} // namespace OutputTail
