#pragma once
// The one way the model runs an external command (xcrun simctl, which, ...):
// through /usr/bin/env with a search path that also covers the usual
// developer-tool folders, collecting both output streams as text. A non-zero
// exit becomes an AppError that names the command and carries the tool's own
// complaint (its last 4 KB; the whole of it in the error's details). Every
// command has a time limit that fits it (CommandTimeLimit): a tool that
// hangs is ended with its whole process group.

#include <QString>
#include <QStringList>
#include <atomic>
#include <memory>

namespace ProcessRunner {

struct Result
{
    QString standardOutput; // empty when the bytes are not valid UTF-8
    QString standardError;
};

// Blocks the calling thread until the child has exited. Throws AppError
// ("Command failed: ...") on a non-zero exit, "... did not finish within N
// seconds and was ended." past its time limit, "Interrupted." after Ctrl-C,
// and the start error unchanged when /usr/bin/env cannot be started. Safe to
// call from any thread.
Result run(const QString &command, const QStringList &arguments, const QString &currentDirectory);

// As above, and the child is ended (SIGTERM) as soon as `cancelled` turns
// true, so that a cancelled run leaves no command behind; it then fails like
// any ended command, and the caller tells the two apart by its flag.
Result run(const QString &command, const QStringList &arguments, const QString &currentDirectory,
           const std::shared_ptr<std::atomic_bool> &cancelled);

} // namespace ProcessRunner
