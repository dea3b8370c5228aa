// vantrel run CONFIG.yaml: the command-line generator. It makes the
// screenshots a configuration file describes (generated-config.yaml, written
// by 'vantrel config' or by hand) from a simulator .app build, with no project
// and no recorded session: a CI pipeline hands it a build and a file.

#include "Command.h"
#include "app/Interrupts.h"
#include "GeneratorProgressDisplay.h"

#include "generation/GeneratorConfigReader.h"
#include "generation/GeneratorRun.h"
#include "model/AppError.h"
#include "replay/XCUITestReplay.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>
#include <unistd.h>

namespace {

constexpr int failedStatus = 1;
constexpr int refusedStatus = 2;

int refuse(CommandContext &c, const ConfigRefusal &refusal)
{
    c.err << refusal.text() << "The configuration was refused; nothing was generated.\n";
    return refusedStatus;
}

std::optional<GeneratorConfig> readConfiguration(CommandContext &c, const QString &path, int &status)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        status = refuse(c, ConfigRefusal{path, {{{}, QStringLiteral("cannot be read: ") + file.errorString()}}});
        return std::nullopt;
    }
    auto read = GeneratorConfigReader::read(file.readAll(), path);
    if (const ConfigRefusal *refusal = std::get_if<ConfigRefusal>(&read)) {
        status = refuse(c, *refusal);
        return std::nullopt;
    }
    GeneratorConfig config = std::get<GeneratorConfig>(std::move(read));
    config.resolvePaths(QFileInfo(path).absolutePath());
    return config;
}

// Runs the generator on a worker while this thread shows its progress and
// turns Ctrl-C (or the application's cancel, a SIGTERM) into a cancel.
GeneratorRun::Result runWithProgress(GeneratorRun &run, std::shared_ptr<std::atomic_bool> cancelled,
                                     QObject &mainThread)
{
    QEventLoop loop;
    QFutureWatcher<GeneratorRun::Result> watcher;
    QObject::connect(&watcher, &QFutureWatcher<GeneratorRun::Result>::finished, &loop, &QEventLoop::quit);
    const Interrupts::Handler interrupts([cancelled] {
        cancelled->store(true);
        XCUITestReplay::cancelActiveRuns();
    });
    const QFuture<GeneratorRun::Result> future = QtConcurrent::run([&run] { return run.run(); });
    watcher.setFuture(future);
    if (!future.isFinished())
        loop.exec();
    // What the worker posted last is shown before the ending.
    QCoreApplication::sendPostedEvents(&mainThread);
    return future.result();
}

int runGenerator(CommandContext &c)
{
    const bool plain = c.takeFlag(QStringLiteral("--plain"));
    if (c.arguments.size() != 1 || c.arguments.first().startsWith(QLatin1String("--")))
        return c.usageError(QStringLiteral("Usage: vantrel run CONFIG.yaml [--plain]"));
    const QString path = c.arguments.first();
    int status = 0;
    const std::optional<GeneratorConfig> config = readConfiguration(c, path, status);
    if (!config)
        return status;

    QObject mainThread; // receives the worker's reports, in order
    GeneratorProgressDisplay display(c.out, !plain && ::isatty(STDOUT_FILENO), config->screenshotCount());
    const auto post = [&mainThread](std::function<void()> job) {
        QMetaObject::invokeMethod(&mainThread, std::move(job), Qt::QueuedConnection);
    };
    GeneratorRun::Listener listener{
        [&](const QString &message) { post([&display, message] { display.log(message); }); },
        [&](const GeneratorRun::Screenshot &shot) {
            post([&display, shot] { display.screenshot(shot.number, shot.language, shot.deviceName, shot.fileName); });
        },
    };
    const auto cancelled = std::make_shared<std::atomic_bool>(false);
    GeneratorRun run(*config, c.model.workspaceDirectory(), c.model.packageRoot(), listener, cancelled);

    // Everything is checked before anything is made.
    try {
        const QList<ConfigProblem> problems = run.check();
        if (!problems.isEmpty())
            return refuse(c, ConfigRefusal{path, problems});
    } catch (const AppError &error) {
        c.err << "Could not load simulators: " << error.message() << "\n";
        return failedStatus;
    }

    const GeneratorRun::Result result = runWithProgress(run, cancelled, mainThread);
    display.finish();
    if (result.ending == GeneratorRun::Ending::failed)
        c.err << result.failure << "\n";
    else if (result.ending == GeneratorRun::Ending::cancelled)
        c.err << "Generation cancelled.\n";
    c.err.flush();
    c.out << "Generated " << result.completed << " of " << result.total << " screenshots.\n";
    switch (result.ending) {
    case GeneratorRun::Ending::succeeded: return 0;
    case GeneratorRun::Ending::cancelled: return Interrupts::exitStatus;
    case GeneratorRun::Ending::failed: return failedStatus;
    }
    return failedStatus;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("run"), QStringLiteral("run CONFIG.yaml [--plain]"),
                 QStringLiteral(
                     "The command-line generator: makes the screenshots that a configuration file\n"
                     "describes (generated-config.yaml from 'vantrel config', or one written by hand)\n"
                     "from the simulator .app build it names. For each device, then each language:\n"
                     "boots the simulator (and shows it when openSimulator is true), installs the\n"
                     "build (removing it first when resetAppData is true), sets a clean status bar,\n"
                     "and for every screen launches the app in that language with the configured\n"
                     "launch arguments and the screen's own, waits its launchWaitSeconds (else the\n"
                     "file's), replays its operations and saves\n"
                     "outputDirectory/<language>/<device>/NN-<screen>.png.\n"
                     "\n"
                     "Relative paths in the file count from the file's folder. Unknown keys, values\n"
                     "of the wrong type, a missing .app or Info.plist, a bundleId that differs from\n"
                     "the build's, an unknown device and empty lists refuse the file before anything\n"
                     "is made. On a terminal a progress bar follows the screenshots; --plain (or\n"
                     "output to a pipe or file) prints one line per screenshot. The last line is\n"
                     "\"Generated N of M screenshots.\"\n"
                     "\n"
                     "Exit status: 0 when every screenshot was made, 1 when the run failed, 2 when\n"
                     "the configuration was refused, 130 when interrupted (Ctrl-C)."),
                 runGenerator, false, false, false});
