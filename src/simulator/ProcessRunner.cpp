// The process runner and the model's background wrapper around it.
//
// One deliberate difference from a plain "wait, then read" runner: both
// pipes are drained while the child runs (ChildProcess does that), because a
// Mac with many simulator runtimes prints a device list far larger than a
// pipe holds. Results, their order and every text stay as they were.

#include "ProcessRunner.h"

#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/Await.h"
#include "replay/ChildProcess.h"
#include "replay/CommandTimeLimit.h"
#include "replay/OutputTail.h"

#include <QDeadlineTimer>
#include <QStringDecoder>
#include <stdexcept>

namespace {

// The developer tools live in these folders even when the application was
// started with a bare search path (as a desktop application usually is).
const QString fixedSearchPath = QStringLiteral("/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin");

QHash<QString, QString> childEnvironment()
{
    QHash<QString, QString> environment = ChildProcess::currentEnvironment();
    const QString inherited = environment.value(QStringLiteral("PATH"));
    environment.insert(QStringLiteral("PATH"),
                       inherited.isEmpty() ? fixedSearchPath : fixedSearchPath + QLatin1Char(':') + inherited);
    return environment;
}

// Output that is not valid UTF-8 reads as empty text.
QString decodeUtf8(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder.decode(bytes);
    return decoder.hasError() ? QString() : text;
}

} // namespace

namespace ProcessRunner {

Result run(const QString &command, const QStringList &arguments, const QString &currentDirectory)
{
    return run(command, arguments, currentDirectory, nullptr);
}

Result run(const QString &command, const QStringList &arguments, const QString &currentDirectory,
           const std::shared_ptr<std::atomic_bool> &cancelled)
{
    std::optional<ChildProcess> child;
    try {
        child.emplace(command, arguments, currentDirectory, childEnvironment());
    } catch (const std::runtime_error &error) {
        // The system's own reason, unwrapped, like every platform failure.
        throw AppError(QString::fromLocal8Bit(error.what()));
    }
    // A tool that hangs is ended, with everything it started, once its time
    // is up; a run's cancel is looked for every 50 ms meanwhile.
    const std::optional<int> limit = CommandTimeLimit::seconds(command, arguments);
    bool finished = false;
    if (cancelled) {
        const QDeadlineTimer deadline = limit ? QDeadlineTimer(std::chrono::seconds(*limit)) : QDeadlineTimer::Forever;
        while (!(finished = child->waitForExit(50)) && !deadline.hasExpired())
            if (cancelled->load())
                child->terminate();
        if (!finished)
            finished = child->finishWithin(0);
    } else {
        finished = child->finishWithin(limit);
    }
    if (!finished)
        throw AppError(CommandTimeLimit::exceededMessage(command, arguments, limit.value_or(0)));
    const ChildProcess::Output &output = child->output();
    Result result{decodeUtf8(output.standardOutput), decodeUtf8(output.standardError)};
    if (output.exitedNormally && output.exitStatus == 0)
        return result;
    // A child ended by Ctrl-C failed because of it, not for its own reason.
    if (ChildProcess::isInterrupted())
        throw AppError(QStringLiteral("Interrupted."));
    const OutputTail::CommandFailure failure =
        OutputTail::commandFailure(command, arguments, result.standardOutput, result.standardError);
    throw AppError(failure.message, failure.details);
}

} // namespace ProcessRunner

ProcessRunner::Result AppModel::runProcessOffMain(const QString &command, const QStringList &arguments)
{
    const QString directory = packageRoot();
    return awaitBackground([command, arguments, directory] { return ProcessRunner::run(command, arguments, directory); });
}

qint32 AppModel::waitForProcess(const std::shared_ptr<ChildProcess> &process)
{
    // The job shares ownership, so a cancel that drops the model's handle
    // meanwhile leaves it a live process to reap.
    return awaitBackground([process] {
        process->waitForExit(-1);
        return static_cast<qint32>(process->output().exitStatus);
    });
}
