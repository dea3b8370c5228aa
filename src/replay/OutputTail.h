#pragma once
// A tool's complaint in a message is kept to its end: a tool that writes
// megabytes to standard error must not make a message of megabytes. The end
// holds the reason (tools print it last); the whole text goes to the run log.

#include <QString>
#include <QStringList>

namespace OutputTail {

constexpr qsizetype maximumBytes = 4096;

// `text` when it takes at most 4 KB of UTF-8; otherwise a line that says
// how much was left out, then (at most) the last 4 KB, beginning with a
// whole line where there is a line break, else with a whole character.
QString of(const QString &text);

// A failed command as the runners report it: "Command failed: COMMAND
// ARGUMENTS", a line feed, then the tool's complaint (standard error, else
// standard output) kept to its end. `details` is the whole text when the
// complaint was cut, else empty.
struct CommandFailure
{
    QString message;
    QString details;
};
CommandFailure commandFailure(const QString &command, const QStringList &arguments,
                              const QString &standardOutput, const QString &standardError);

} // namespace OutputTail
