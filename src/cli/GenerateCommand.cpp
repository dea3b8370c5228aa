// vantrel generate: replays the recorded flow for every selected device and
// language, showing progress while it runs and the outcome at the end.
// Ctrl-C cancels the way the desktop's Cancel button does.

#include "Command.h"
#include "GenerateProgressDisplay.h"
#include "app/Interrupts.h"

#include <QEventLoop>
#include <QFutureWatcher>
#include <QTimer>
#include <unistd.h>

namespace {

void printOutcome(CommandContext &c, const RunOutcome &outcome)
{
    // A failure goes to standard error, once: it is also the last error.
    QTextStream &stream = outcome.kind == RunOutcomeKind::failed ? c.err : c.out;
    stream << "\n" << outcome.title << "\n" << outcome.detail << "\n";
    if (const std::optional<DriftNotice> drift = c.model.lastRunDriftNotice())
        stream << "\n" << drift->heading << "\n" << drift->explanation << "\n";
    stream.flush();
}

int exitStatus(const std::optional<RunOutcome> &outcome)
{
    if (!outcome)
        return 1;
    switch (outcome->kind) {
    case RunOutcomeKind::success: return 0;
    case RunOutcomeKind::cancelled: return Interrupts::exitStatus;
    case RunOutcomeKind::failed: return 1;
    }
    return 1;
}

// Runs the event loop until the run's worker has finished. A cancel clears
// runTask at once, so the run is followed through its own future.
void waitForRun(AppModel &model, QFuture<void> task, GenerateProgressDisplay &display, bool live)
{
    QEventLoop loop;
    QFutureWatcher<void> watcher;
    QObject::connect(&watcher, &QFutureWatcher<void>::finished, &loop, &QEventLoop::quit);
    // A terminal is redrawn at most ten times a second; plain output follows every change.
    QTimer redraw;
    redraw.setSingleShot(true);
    redraw.setInterval(100);
    QObject::connect(&redraw, &QTimer::timeout, &loop, [&display] { display.update(); });
    QObject::connect(&model, &AppModel::changed, &loop, [&] {
        if (!live)
            display.update();
        else if (!redraw.isActive())
            redraw.start();
    });
    // Ctrl-C cancels the way the desktop's Cancel button does.
    const Interrupts::Handler interrupts([&model] { model.cancelRun(); });
    watcher.setFuture(task);
    if (!task.isFinished())
        loop.exec();
}

int runGenerate(CommandContext &c)
{
    const bool plain = c.takeFlag(QStringLiteral("--plain"));
    const bool fromBuild = c.takeFlag(QStringLiteral("--from-build"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("generate takes no arguments besides --from-build and --plain."));
    const bool live = !plain && ::isatty(STDOUT_FILENO);
    GenerateProgressDisplay display(c, live);
    if (fromBuild) {
        c.model.startBuildGeneration();
    } else {
        if (c.model.canRunAutomatedCapture())
            c.err << "note: this project also has a chosen .app build; 'vantrel generate --from-build' "
                     "generates from it. This run replays the recorded flow on the attached Simulator.\n";
        c.model.startRecordedAttachedCapture();
    }
    waitForRun(c.model, c.model.runTask(), display, live);
    display.finish();

    if (c.model.lastRunOutcome())
        printOutcome(c, *c.model.lastRunOutcome());
    const int status = exitStatus(c.model.lastRunOutcome());
    if (status == 1 && c.model.lastRunOutcome()) {
        c.model.clearLastError(); // already printed with the outcome
        // The run log lives only as long as this command, so a failed run
        // leaves its diagnostics behind for a problem report.
        if (const std::optional<QString> path = c.model.writeDiagnostics())
            c.err << "Diagnostics of this run: " << *path << "\n";
    }
    return status;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("generate"), QStringLiteral("generate [--from-build] [--plain]"),
                 QStringLiteral("Replays the recorded flow on the attached Simulator for every selected\n"
                                "language and saves one PNG per checkpoint into the output folder,\n"
                                "output/<language>/<device>/NN-name.png. Screenshots that drifted from\n"
                                "their recorded checkpoint go to _needs-review and stop the run.\n"
                                "\n"
                                "On a terminal the progress of every device and language is shown live;\n"
                                "--plain (or output to a pipe or file) prints one line per change.\n"
                                "Ctrl-C cancels the run and ends the build. A failed run writes\n"
                                "diagnostics.txt (set-up and run log) for a problem report.\n"
                                "\n"
                                "--from-build generates from the project's chosen .app build instead: it\n"
                                "writes generated-config.yaml and runs the command-line generator on it\n"
                                "(VANTREL_CLI, QUILLMARK_CLI, the vantrel beside this program, a .build\n"
                                "output under the data folder, or vantrel on the PATH), showing its output.\n"
                                "\n"
                                "Exit status: 0 when complete, 1 when failed, 130 when cancelled."),
                 runGenerate});
