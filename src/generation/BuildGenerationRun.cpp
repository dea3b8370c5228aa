// Generation from the chosen .app build: the project goes to the
// command-line generator as generated-config.yaml, and the generator's run
// is followed from its output. One worker, like the recorded run; it
// changes model state only through calls onto the main thread.

#include "MainThreadCall.h"
#include "model/AppError.h"
#include "model/AppModel.h"
#include "replay/ChildProcess.h"

#include <QRegularExpression>

namespace {

constexpr int outputPollMilliseconds = 100;

// Hands on complete lines of one output stream as they arrive; the rest of
// a line waits for its line feed, or for the end.
class LineSplitter
{
public:
    QStringList take(const QByteArray &stream, bool atEnd)
    {
        QStringList lines;
        qsizetype end;
        while ((end = stream.indexOf('\n', m_consumed)) >= 0) {
            lines.append(QString::fromUtf8(stream.mid(m_consumed, end - m_consumed)));
            m_consumed = end + 1;
        }
        if (atEnd && m_consumed < stream.size()) {
            lines.append(QString::fromUtf8(stream.mid(m_consumed)));
            m_consumed = stream.size();
        }
        return lines;
    }

private:
    qsizetype m_consumed = 0;
};

class BuildGeneration
{
public:
    BuildGeneration(QPointer<AppModel> model, std::shared_ptr<std::atomic_bool> cancelled)
        : m_model(std::move(model)), m_cancelled(std::move(cancelled))
    {
    }

    void execute();

private:
    template <class F> auto onMain(F job) { return callOnMainThread(m_model, std::move(job)); }
    qint32 runGenerator(const AppModel::GeneratorCommand &command, const QString &configuration);
    void forwardOutput(ChildProcess &process, bool atEnd);

    QPointer<AppModel> m_model;
    std::shared_ptr<std::atomic_bool> m_cancelled;
    QString m_packageRoot;
    LineSplitter m_standardOutput;
    LineSplitter m_standardError;
    QString m_summary; // the generator's "Generated N of M screenshots." line
};

void BuildGeneration::execute()
{
    try {
        try {
            const QString configuration = onMain([this](AppModel &m) {
                m.validateRunnableProject();
                const QString path = m.writeGeneratedConfig();
                m_packageRoot = m.packageRoot();
                m.markRunStarted();
                m.appendLog(QStringLiteral("Wrote ") + path);
                return path;
            });
            const std::optional<AppModel::GeneratorCommand> command = AppModel::findGeneratorCommand(m_packageRoot);
            if (!command)
                throw AppError(AppModel::generatorNotFoundMessage());
            const qint32 status = runGenerator(*command, configuration);
            if (m_cancelled->load()) {
                onMain([](AppModel &m) { m.endRunCancelled(); });
            } else if (status == 0) {
                onMain([this](AppModel &m) {
                    const QHash<QString, RunProgress> pairs = m.runProgress();
                    for (const RunProgress &pair : pairs)
                        m.updateRunProgress(pair.language, pair.deviceID, pair.completed, RunProgressState::done);
                    m.appendLog(QStringLiteral("Build generation complete."));
                    m.endRunSucceeded(m_summary.isEmpty() ? QStringLiteral("Generated the screenshots into ")
                                                                + m.project().outputDirectory + QLatin1Char('.')
                                                          : m_summary);
                });
            } else {
                // The run log states what the process did; the outcome and the
                // last error say what it means for the user: no screenshots.
                onMain([status](AppModel &m) {
                    m.appendLog(QStringLiteral("The command exited with code %1.").arg(status));
                    m.endRunFailed(QStringLiteral("Capture failed with exit code %1.").arg(status));
                });
            }
        } catch (const ModelGone &) {
            throw;
        } catch (const std::exception &error) {
            const QString description = QString::fromUtf8(error.what());
            onMain([&](AppModel &m) { m.endRunFailed(description); });
        }
    } catch (const ModelGone &) {
        // Nobody is left to report to; the generator ends with its last handle.
    }
}

qint32 BuildGeneration::runGenerator(const AppModel::GeneratorCommand &command, const QString &configuration)
{
    const QStringList arguments = command.leadingArguments + QStringList{QStringLiteral("run"), configuration};
    QHash<QString, QString> environment = ChildProcess::currentEnvironment();
    // A generator of ours keeps its runner project in this application's workspace.
    environment.insert(QStringLiteral("VANTREL_HOME"), m_packageRoot);
    std::shared_ptr<ChildProcess> process;
    try {
        process = std::make_shared<ChildProcess>(command.executable, arguments, m_packageRoot, environment);
    } catch (const std::runtime_error &error) {
        throw AppError(QStringLiteral("Could not start %1: %2").arg(command.executable, QString::fromLocal8Bit(error.what())));
    }
    onMain([&](AppModel &m) {
        m.appendLog(QStringLiteral("Running ") + (QStringList{command.executable} + arguments).join(QLatin1Char(' ')));
        m.adoptRunProcess(process);
        // A cancel that came in before the process was known ends it now.
        if (m_cancelled->load())
            process->terminate();
    });
    while (!process->waitForExit(outputPollMilliseconds))
        forwardOutput(*process, false);
    forwardOutput(*process, true);
    onMain([&](AppModel &m) { m.releaseRunProcess(process); });
    return process->output().exitStatus;
}

// Both streams go to the run log as they arrive (the output collected so
// far is read on this thread, the one that waits for the process).
void BuildGeneration::forwardOutput(ChildProcess &process, bool atEnd)
{
    QStringList lines = m_standardOutput.take(process.output().standardOutput, atEnd);
    lines += m_standardError.take(process.output().standardError, atEnd);
    if (lines.isEmpty())
        return;
    for (const QString &line : lines)
        if (line.startsWith(QLatin1String("Generated ")))
            m_summary = line;
    onMain([&lines](AppModel &m) {
        for (const QString &line : lines)
            m.handleGeneratorOutputLine(line);
    });
}

} // namespace

void AppModel::startBuildGeneration()
{
    startRunTask(runBuildGeneration);
}

void AppModel::runBuildGeneration(QPointer<AppModel> model, std::shared_ptr<std::atomic_bool> cancelled)
{
    BuildGeneration(std::move(model), std::move(cancelled)).execute();
}

void AppModel::handleGeneratorOutputLine(const QString &line)
{
    appendLog(line);
    // "Screenshot 3 of 6: de-DE / iPhone 15 Pro / 01-Trips.png", the
    // generator's line per screenshot when its output is no terminal.
    static const QRegularExpression screenshotLine(QStringLiteral("^Screenshot \\d+ of \\d+: (\\S+) / (.+) / [^/]+$"));
    const QRegularExpressionMatch match = screenshotLine.match(line);
    if (!match.hasMatch())
        return;
    const QString language = match.captured(1);
    for (const QString &device : m_project.devices)
        if (displayNameForDeviceID(device) == match.captured(2) && m_project.languages.contains(language))
            incrementRunProgress(language, device);
}
