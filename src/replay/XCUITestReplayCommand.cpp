// Runs one build-tool command and keeps the process-wide list of running
// builds, so that a cancel from any thread can end them.
#include "ChildProcess.h"
#include "CommandTimeLimit.h"
#include "OutputTail.h"
#include "ProgressCursor.h"
#include "XCUITestReplayInternal.h"

#include <QStringDecoder>
#include <memory>
#include <mutex>
#include <vector>

namespace XCUITestReplay {

namespace {

using ProcessList = std::vector<std::shared_ptr<ChildProcess>>;

// The replay runner's only lock: it guards activeProcesses() and nothing else.
std::mutex &activeProcessLock()
{
    static std::mutex lock;
    return lock;
}

ProcessList &activeProcesses()
{
    static ProcessList processes;
    return processes;
}

// Keeps a build in the list from just after its start until just after its
// exit, also when a progress handler throws.
class ActiveProcessRegistration
{
public:
    explicit ActiveProcessRegistration(std::shared_ptr<ChildProcess> process)
        : m_process(std::move(process))
    {
        std::lock_guard guard(activeProcessLock());
        activeProcesses().push_back(m_process);
    }
    ~ActiveProcessRegistration()
    {
        std::lock_guard guard(activeProcessLock());
        std::erase(activeProcesses(), m_process);
    }
    ActiveProcessRegistration(const ActiveProcessRegistration &) = delete;
    ActiveProcessRegistration &operator=(const ActiveProcessRegistration &) = delete;

private:
    std::shared_ptr<ChildProcess> m_process;
};

constexpr int progressPollMilliseconds = 150;
const QString developerToolPath = QStringLiteral(
    "/Applications/Xcode.app/Contents/Developer/usr/bin:/usr/bin:/bin:/usr/sbin:/sbin:/opt/homebrew/bin:/usr/local/bin");

QHash<QString, QString> childEnvironment(const QHash<QString, QString> &overrides)
{
    QHash<QString, QString> environment = ChildProcess::currentEnvironment();
    const QString inheritedPath = environment.value(QStringLiteral("PATH"));
    environment.insert(QStringLiteral("PATH"), inheritedPath.isEmpty()
                                                   ? developerToolPath
                                                   : developerToolPath + QLatin1Char(':') + inheritedPath);
    for (auto it = overrides.cbegin(); it != overrides.cend(); ++it)
        environment.insert(it.key(), it.value());
    return environment;
}

QString decodeOrEmpty(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() ? QString() : text;
}

std::shared_ptr<ChildProcess> start(const QString &command, const QStringList &arguments,
                                    const QString &currentDirectory, const QHash<QString, QString> &environment)
{
    try {
        return std::make_shared<ChildProcess>(command, arguments, currentDirectory, childEnvironment(environment));
    } catch (const std::exception &error) {
        throw XCTestReplayError(QStringLiteral("Could not start %1: %2")
                                    .arg(command, QString::fromLocal8Bit(error.what())));
    }
}

// Both pipes are drained while waiting (a real build prints more than a pipe
// holds); the caller still sees the output only after the exit.
void waitForExit(ChildProcess &process, const QString &command, const QStringList &arguments,
                 const std::optional<QString> &progressFile, const ProgressHandler &progressHandler)
{
    // Only a build reports progress, and a build has no time limit.
    const std::optional<int> timeLimit = CommandTimeLimit::seconds(command, arguments);
    if (!progressFile || !progressHandler) {
        if (!process.finishWithin(timeLimit))
            throw XCTestReplayError(CommandTimeLimit::exceededMessage(command, arguments, *timeLimit));
        return;
    }
    ProgressCursor cursor(*progressFile, progressHandler);
    do {
        cursor.deliver();
    } while (!process.waitForExit(progressPollMilliseconds));
    // Lines written just before the exit are not lost.
    cursor.deliver();
}

} // namespace

CommandResult runCommand(const QString &command, const QStringList &arguments,
                         const QString &currentDirectory,
                         const QHash<QString, QString> &environment,
                         const std::optional<QString> &progressFile,
                         const ProgressHandler &progressHandler)
{
    const std::shared_ptr<ChildProcess> process = start(command, arguments, currentDirectory, environment);
    {
        std::optional<ActiveProcessRegistration> registration;
        if (command == QLatin1String("xcodebuild"))
            registration.emplace(process);
        waitForExit(*process, command, arguments, progressFile, progressHandler);
    }

    const ChildProcess::Output &output = process->output();
    CommandResult result{decodeOrEmpty(output.standardOutput), decodeOrEmpty(output.standardError)};
    if (output.exitStatus == 0)
        return result;
    const OutputTail::CommandFailure failure =
        OutputTail::commandFailure(command, arguments, result.standardOutput, result.standardError);
    throw XCTestReplayError(failure.message, failure.details);
}

void cancelActiveRuns() noexcept
{
    ProcessList running;
    {
        std::lock_guard guard(activeProcessLock());
        running = activeProcesses();
    }
    for (const std::shared_ptr<ChildProcess> &process : running)
        if (process->isRunning())
            process->terminate();
}

} // namespace XCUITestReplay
