#pragma once
// A child process with exactly the semantics the product needs, in one
// place: started through /usr/bin/env with a given environment and working
// directory, in a process group of its own (so that ending it also ends what
// it started), standard input from /dev/null, standard output and standard
// error on two pipes that are read while the child runs (so a child that
// prints more than a pipe holds never blocks), an exit status, a time limit,
// and termination from any thread.
//
// Used by the replay runner (xcodebuild) and by the model's ProcessRunner
// (xcrun simctl and friends).

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

class ChildProcess
{
public:
    struct Output
    {
        QByteArray standardOutput;
        QByteArray standardError;
        int exitStatus = 0;     // the exit code, or 128 + signal when killed
        bool exitedNormally = true;
    };

    // Starts "/usr/bin/env command arguments..." in `workingDirectory` with
    // exactly `environment` (NAME -> value). Throws std::runtime_error with
    // the system's description when the child cannot be started.
    ChildProcess(const QString &command, const QStringList &arguments,
                 const QString &workingDirectory, const QHash<QString, QString> &environment);
    ~ChildProcess(); // terminates and reaps a child that is still running

    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    qint64 pid() const;
    // True until the child has exited (it may still need to be waited for).
    bool isRunning() const;
    // Waits up to `milliseconds` (forever when negative) while draining both
    // pipes; returns true once the child has exited and its pipes are closed.
    bool waitForExit(int milliseconds = -1);
    // Waits for the child for at most `seconds` (without a limit when
    // absent). A child that runs longer is ended with its whole process
    // group (SIGTERM, then SIGKILL two seconds later) and false is returned.
    bool finishWithin(std::optional<int> seconds);
    // The collected output; valid after waitForExit returned true.
    const Output &output() const;
    // Sends SIGTERM to the child's process group (the child and whatever it
    // started), once however often it is called; safe from any thread,
    // harmless after exit.
    void terminate();

    // An interrupt (Ctrl-C) ends every running child's process group and
    // refuses to start new children from then on, so that the command in
    // progress ends at once whichever thread waits for it. Safe from any
    // thread, not from a signal handler.
    static void interruptAll();
    static bool isInterrupted();
    // While one of these lives, children may still start after an interrupt:
    // the short commands that put a device back as the user had it (its own
    // status bar) run even when the run they end was interrupted, and an
    // interrupt that comes while they run lets them finish. They are still
    // killed with everything else if the command is cut short.
    class Cleanup
    {
    public:
        Cleanup();
        ~Cleanup();
        Cleanup(const Cleanup &) = delete;
        Cleanup &operator=(const Cleanup &) = delete;
    };
    // The last resort before the process leaves: SIGKILL to every child's
    // process group that is still running.
    static void killAll();

    // The calling process's environment as a map.
    static QHash<QString, QString> currentEnvironment();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
