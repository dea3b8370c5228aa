// The recorded generation run: for every device and language, relaunch the
// app in that language, replay the recorded checkpoints through the UI-test
// runner, count and check the screenshots. The run is one worker; it blocks
// on device commands and the build, and changes model state only through
// calls onto the main thread.

#include "BuildCanceller.h"
#include "LocalizationCheck.h"
#include "MainThreadCall.h"
#include "ScreenWordsReader.h"
#include "ScreenshotFileName.h"
#include "ThumbnailCache.h"
#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/ErrorDetails.h"
#include "model/Folder.h"
#include "model/PathSanitizer.h"
#include "replay/ChildProcess.h"
#include "replay/XCUITestReplay.h"
#include "simulator/ProcessRunner.h"

#include <QDir>
#include <QFileInfo>

namespace {

// Thrown on the worker when the user cancelled between two steps.
struct RunCancelled
{
};

// One screenshot of a later language, to be held against the first
// language's screenshot of the same checkpoint on the same device.
struct PendingLocalizationCheck
{
    QString language;
    QString deviceFolder;
    QString file;
    QString path;
    QString firstLanguagePath;
};


class RecordedRun
{
public:
    RecordedRun(QPointer<AppModel> model, BuildCanceller::Flag cancelled)
        : m_model(std::move(model)), m_cancelled(std::move(cancelled))
    {
    }

    void execute();

private:
    template <class F> auto onMain(F job) { return callOnMainThread(m_model, std::move(job)); }
    void log(const QString &message)
    {
        onMain([message](AppModel &m) { m.appendLog(message); });
    }
    void checkCancelled() const
    {
        if (m_cancelled->load())
            throw RunCancelled{};
    }

    void prepare();
    void prepareDevice(const QString &device);
    void runPair(const QString &device, const QString &language);
    void replay(const QString &device, const QString &language, const QString &outputDirectory);
    void giveBackStatusBar(const QString &device);
    QString runCommand(const QStringList &arguments, const QString &command = QStringLiteral("xcrun"));
    void checkAllWritten(const QString &outputDirectory, const QString &language, const QString &deviceName);
    void checkScreenshots(const QString &outputDirectory, const QString &language, const QString &deviceName);
    void startLocalizationCheck(const QString &language, const QString &deviceName, const QString &outputDirectory);
    void finishLocalizationCheck();

    void stopReadingWords();
    void finishSucceeded();
    void finishCancelled();
    void finishFailed(const QString &description);

    QPointer<AppModel> m_model;
    BuildCanceller::Flag m_cancelled;
    ScreenshotProject m_project; // the project as it was when the run started
    QString m_packageRoot;
    QString m_workspace;
    PlatformServices *m_platform = nullptr; // owned by the model, which outlives every run
    // Reads every screenshot's words as the device writes them (none for a
    // run in one language), and the later languages' screenshots to hold
    // against the first language's.
    std::unique_ptr<ScreenWordsReader> m_wordsReader;
    QList<PendingLocalizationCheck> m_localizationChecks;
};

void RecordedRun::execute()
{
    try {
        try {
            prepare();
            for (const QString &device : m_project.devices) {
                checkCancelled();
                prepareDevice(device);
                for (const QString &language : m_project.languages) {
                    checkCancelled();
                    runPair(device, language);
                }
            }
            checkCancelled();
            finishLocalizationCheck();
            checkCancelled();
            finishSucceeded();
        } catch (const RunCancelled &) {
            finishCancelled();
        } catch (const ModelGone &) {
            throw;
        } catch (const std::exception &error) {
            // A build ended by a cancel or an interrupt fails like any other;
            // the flags tell them apart.
            if (m_cancelled->load() || ChildProcess::isInterrupted()) {
                finishCancelled();
            } else {
                if (const QString details = errorDetails(error); !details.isEmpty())
                    log(details); // the message shows only its end
                finishFailed(QString::fromUtf8(error.what()));
            }
        } catch (...) {
            finishFailed(QStringLiteral("Generation stopped because of an unexpected error."));
        }
    } catch (const ModelGone &) {
        // Nobody is left to report to.
    }
}

void RecordedRun::prepare()
{
    onMain([this](AppModel &m) {
        m.validateRecordedAttachedProject();
        m_project = m.project();
        m_packageRoot = m.packageRoot();
        m_workspace = m.workspaceDirectory();
        m_platform = &m.platform();
    });
    if (m_project.languages.size() > 1) {
        PlatformServices *platform = m_platform;
        m_wordsReader = std::make_unique<ScreenWordsReader>(
            [platform](const QString &path) { return ScreenWordsReader::readScreenshot(*platform, path); });
    }
    AppModel::ensureXCUITestReplayAvailableIfNeeded(m_project.screens);
    onMain([](AppModel &m) { m.markRunStarted(); });
}

QString RecordedRun::runCommand(const QStringList &arguments, const QString &command)
{
    return ProcessRunner::run(command, arguments, m_packageRoot).standardOutput;
}

void RecordedRun::prepareDevice(const QString &device)
{
    try {
        runCommand({QStringLiteral("simctl"), QStringLiteral("boot"), device});
    } catch (const AppError &) {
        // Already booted: the run goes on with the device as it is.
    }
    checkCancelled();
    // Only the boot may fail quietly: every other command that prepares the
    // device fails the run, so that a run never ends "complete" on a
    // Simulator that was not brought up as asked.
    runCommand({QStringLiteral("-a"), QStringLiteral("Simulator"), QStringLiteral("--args"),
                QStringLiteral("-CurrentDeviceUDID"), device},
               QStringLiteral("open"));
    checkCancelled();
    runCommand({QStringLiteral("simctl"), QStringLiteral("bootstatus"), device, QStringLiteral("-b")});
    checkCancelled();
    onMain([device](AppModel &m) {
        m.ensureRecordedAppInstalled(device);
        // Now that it runs, the device can say whether it is the size the
        // flow was recorded on.
        m.refreshDevicePointSize(device);
        if (const std::optional<QString> note = m.recordedDeviceNote(device))
            m.appendLog(*note);
    });
}

void RecordedRun::runPair(const QString &device, const QString &language)
{
    const auto [deviceName, outputDirectory] = onMain([&](AppModel &m) {
        m.updateRunProgress(language, device, 0, RunProgressState::running);
        const QString name = m.displayNameForDeviceID(device);
        m.appendLog(QStringLiteral("Running ") + name + QStringLiteral(" / ") + language);
        return std::pair(name, m.generatedOutputDirectory(language, name));
    });
    onMain([&](AppModel &m) { m.launchRecordedApp(device, language); });
    try {
        onMain([&](AppModel &m) { m.overrideStatusBar(device); });
        checkCancelled();
        replay(device, language, outputDirectory);
        checkCancelled();
    } catch (...) {
        giveBackStatusBar(device);
        throw;
    }
    onMain([&](AppModel &m) { m.resetStatusBar(device); });

    const QFileInfoList files = QDir(outputDirectory).entryInfoList(QDir::Files);
    const qint64 count = std::count_if(files.begin(), files.end(), [](const QFileInfo &file) {
        return file.suffix().toLower() == QLatin1String("png");
    });
    onMain([&](AppModel &m) { m.updateRunProgress(language, device, count, RunProgressState::done); });
    checkAllWritten(outputDirectory, language, deviceName);
    checkScreenshots(outputDirectory, language, deviceName);
    startLocalizationCheck(language, deviceName, outputDirectory);
}

// Notes which of this language's screenshots are to be checked; their words
// are read in the background since the device wrote them, and compared at
// the end of the run.
void RecordedRun::startLocalizationCheck(const QString &language, const QString &deviceName,
                                         const QString &outputDirectory)
{
    if (!m_wordsReader || language == m_project.languages.first())
        return;
    const QString deviceFolder = PathSanitizer::component(deviceName);
    const QString firstLanguageDirectory = onMain(
        [&](AppModel &m) { return m.generatedOutputDirectory(m_project.languages.first(), deviceName); });
    for (qsizetype i = 0; i < m_project.screens.size(); ++i) {
        const QString file = screenshotFileName(i + 1, m_project.screens.at(i).name);
        const QString path = QDir(outputDirectory).filePath(file);
        const QString firstLanguagePath = QDir(firstLanguageDirectory).filePath(file);
        if (!QFileInfo::exists(path) || !QFileInfo::exists(firstLanguagePath))
            continue;
        m_localizationChecks.append({language, deviceFolder, file, path, firstLanguagePath});
    }
}

// Holds every later language's screenshot against the first language's,
// lists the ones that look the same and keeps them beside the screenshots.
void RecordedRun::finishLocalizationCheck()
{
    if (!m_wordsReader)
        return;
    const QString firstLanguage = m_project.languages.first();
    QList<LocalizationWarning> warnings;
    for (const PendingLocalizationCheck &check : std::as_const(m_localizationChecks)) {
        checkCancelled();
        const ScreenWordsReader::Words words = m_wordsReader->words(check.path);
        const ScreenWordsReader::Words firstWords = m_wordsReader->words(check.firstLanguagePath);
        if (words && firstWords && LocalizationCheck::looksUnlocalized(*words, *firstWords))
            warnings.append({check.language, firstLanguage, check.deviceFolder, check.file});
    }
    onMain([&](AppModel &m) {
        QList<LocalizationWarning> kept = warnings;
        try {
            kept = m.recordLocalizationWarnings(warnings);
        } catch (const AppError &error) {
            // The run's pictures are fine; only the list could not be kept.
            m.appendLog(QStringLiteral("Could not keep the localization warnings: ") + error.message());
        }
        qsizetype dismissed = 0;
        for (const LocalizationWarning &warning : kept) {
            if (warning.dismissed)
                ++dismissed;
            else
                m.appendLog(warning.text());
        }
        if (dismissed > 0)
            m.appendLog(QStringLiteral("%1 dismissed localization warnings not shown.").arg(dismissed));
    });
}

void RecordedRun::replay(const QString &device, const QString &language, const QString &outputDirectory)
{
    Folder::ensure(outputDirectory);
    log(QStringLiteral("Replaying %1 checkpoints for %2").arg(m_project.screens.size()).arg(language));
    BuildCanceller canceller(m_cancelled);
    QPointer<AppModel> model = m_model;
    ScreenWordsReader *wordsReader = m_wordsReader.get();
    XCUITestReplay::run(AppModel::replaySteps(m_project.screens), m_project.bundleId, device, m_workspace,
                        outputDirectory, [model, language, device, outputDirectory, wordsReader](const QString &path) {
                            // Queued, not blocking: a burst of lines is counted in order
                            // without holding the build back.
                            QMetaObject::invokeMethod(
                                &mainThreadRelay(),
                                [model, language, device] {
                                    if (model)
                                        model->incrementRunProgress(language, device);
                                },
                                Qt::QueuedConnection);
                            // The drift check needs this screenshot's thumbnail and
                            // the localization check its words: both are made while
                            // the device works on the next one.
                            const QString screenshot = QDir(outputDirectory).filePath(path);
                            ThumbnailCache::prefetch(screenshot);
                            if (wordsReader)
                                wordsReader->add(screenshot);
                        });
}

// After a replay that failed or was cancelled, the device gets its own
// status bar back all the same. The run's own error is what the user needs
// to see, so a failure here is only logged.
void RecordedRun::giveBackStatusBar(const QString &device)
{
    try {
        onMain([&](AppModel &m) {
            try {
                m.resetStatusBar(device);
            } catch (const std::exception &error) {
                m.appendLog(QStringLiteral("Could not clear the status bar of ") + m.displayNameForDeviceID(device)
                            + QStringLiteral(": ") + QString::fromUtf8(error.what()));
            }
        });
    } catch (const ModelGone &) {
        // Nobody is left to clear it for.
    }
}

// A test run that succeeds without leaving its pictures is a failure of
// the run, not a drift of the app: the message names what is missing.
void RecordedRun::checkAllWritten(const QString &outputDirectory, const QString &language, const QString &deviceName)
{
    QStringList missing;
    for (qsizetype i = 0; i < m_project.screens.size(); ++i) {
        const QString filename = screenshotFileName(i + 1, m_project.screens.at(i).name);
        if (!QFileInfo::exists(QDir(outputDirectory).filePath(filename)))
            missing.append(filename);
    }
    if (!missing.isEmpty())
        throw AppError(QStringLiteral("xcodebuild finished for %1 on %2 without writing %3 of %4 screenshots: %5")
                           .arg(language, deviceName)
                           .arg(missing.size())
                           .arg(m_project.screens.size())
                           .arg(missing.join(QStringLiteral(", "))));
}

void RecordedRun::checkScreenshots(const QString &outputDirectory, const QString &language,
                                   const QString &deviceName)
{
    onMain([&](AppModel &m) {
        const QList<ScreenshotValidationIssue> issues = m.validateGeneratedScreens(outputDirectory, language, deviceName);
        if (issues.isEmpty())
            return;
        QStringList names;
        for (const ScreenshotValidationIssue &issue : issues) {
            m.appendLog(issue.filename + QStringLiteral(" drift ") + QString::number(issue.driftScore, 'f', 2));
            names.append(issue.filename);
        }
        m.appendLog(QStringLiteral("Stopped: suspicious screenshots moved to _needs-review: ")
                    + names.join(QStringLiteral(", ")));
        throw AppError(AppModel::driftStopMessage());
    });
}

// Before any ending: the model may be gone soon after, with the
// recognition the background reads use.
void RecordedRun::stopReadingWords()
{
    m_wordsReader.reset();
}

void RecordedRun::finishSucceeded()
{
    stopReadingWords();
    onMain([](AppModel &m) {
        m.appendLog(QStringLiteral("Recorded flow generation complete."));
        m.endRunSucceeded(QStringLiteral("Generated %1 of %2 screenshots.")
                              .arg(m.completedRunProgressCount())
                              .arg(m.runTotalCount()));
    });
}

void RecordedRun::finishCancelled()
{
    stopReadingWords();
    onMain([](AppModel &m) { m.endRunCancelled(); });
}

void RecordedRun::finishFailed(const QString &description)
{
    stopReadingWords();
    onMain([&](AppModel &m) { m.endRunFailed(description); });
}

} // namespace

QString AppModel::driftStopMessage()
{
    return QStringLiteral("Generated screenshots drifted from the recorded flow. Check output/_needs-review and "
                          "re-record from the last good checkpoint.");
}

std::optional<DriftNotice> AppModel::lastRunDriftNotice() const
{
    if (!m_lastRunOutcome || m_lastRunOutcome->kind != RunOutcomeKind::failed
        || m_lastRunOutcome->detail != driftStopMessage())
        return std::nullopt;
    return DriftNotice{QStringLiteral("Drift detected"),
                       QStringLiteral("Possible paywall, modal, slow transition, or wrong screen.")};
}

QString AppModel::lastRunLog() const
{
    return m_runLog.mid(std::min(m_lastRunLogStart, m_runLog.size()));
}

RunOutcome AppModel::cancelledOutcome(qint64 completed, qint64 total)
{
    return RunOutcome{RunOutcomeKind::cancelled, QStringLiteral("Generation cancelled"),
                      QStringLiteral("%1 of %2 screenshots completed.").arg(completed).arg(total), completed,
                      ReferenceDate::now()};
}

void AppModel::startRecordedAttachedCapture()
{
    startRunTask(runRecordedAttachedCapture);
}

void AppModel::runRecordedAttachedCapture(QPointer<AppModel> model, std::shared_ptr<std::atomic_bool> cancelled)
{
    RecordedRun(std::move(model), std::move(cancelled)).execute();
}

void AppModel::cancelRun()
{
    assertMainThread();
    m_runCancelRequested->store(true);
    m_runTask = QFuture<void>();
    if (m_runProcess) {
        m_runProcess->terminate();
        m_runProcess.reset();
    }
    XCUITestReplay::cancelActiveRuns();
    m_isRunning = false;
    markUnfinishedProgressIdle();
    appendLog(QStringLiteral("Cancel requested."));
    m_lastRunOutcome = cancelledOutcome(completedRunProgressCount(), runTotalCount());
    notifyChanged();
}
