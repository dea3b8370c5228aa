#pragma once
// AppModel: the one place that holds the application's state. Every front
// (the `vantrel` command line, the desktop application, tests) reads this
// state and calls these operations; none keeps logic of its own.
//
// The state is declared here, all of it. The operations are defined in the
// folder of the subsystem they belong to: project and workspace in
// src/model/, devices and apps in src/simulator/, recording and checkpoints
// in src/recorder/, the generation run in src/generation/, readiness and
// review in src/app/.
//
// Threads: state changes only on the main thread. Operations that wait for
// background work do so through awaitFuture/awaitBackground (Await.h), which
// keep the event loop running.

#include "app/ContactSheet.h"
#include "app/LocalizationWarning.h"
#include "app/QuickStartRow.h"
#include "app/Readiness.h"
#include "app/ReviewImage.h"
#include "generation/DriftNotice.h"
#include "generation/RunProgressGrid.h"
#include "generation/ScreenshotValidationIssue.h"
#include "model/ProjectLibraryItem.h"
#include "model/ScreenshotProject.h"
#include "platform/PlatformServices.h"
#include "replay/XCTestReplayStep.h"
#include "simulator/InstalledSimulatorApp.h"
#include "simulator/ProcessRunner.h"
#include "simulator/SimulatorDevice.h"

#include <QFuture>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <optional>

class ChildProcess;
struct GeneratorConfig;
class QLockFile;

class AppModel : public QObject
{
    Q_OBJECT

public:
    // The press of a press-release pair being recorded.
    struct SimulatorMouseDown
    {
        QPointF screenPoint;    // desktop point
        QPointF simulatorPoint; // device point, not yet rounded
        ReferenceSeconds date = 0;
    };

    // `packageRootOverride` (from --root or VANTREL_HOME) wins over the
    // usual choice of data root. `platform` defaults to this desktop's.
    explicit AppModel(std::optional<QString> packageRootOverride = std::nullopt,
                      std::unique_ptr<PlatformServices> platform = nullptr,
                      QObject *parent = nullptr);
    ~AppModel() override;

    // ---------------------------------------------------------------- state
    // What the fronts show. Reading never starts a process or saves; the
    // state changes only through the operations below, and `changed()`
    // tells when to read again.
    const ScreenshotProject &project() const { return m_project; }
    const QList<SimulatorDevice> &availableDevices() const { return m_availableDevices; }
    const QList<ReviewImage> &reviewImages() const { return m_reviewImages; }
    // What the recording has collected since the last checkpoint.
    const QList<OperationDraft> &pendingOperations() const { return m_pendingOperations; }
    const QList<InstalledSimulatorApp> &installedApps() const { return m_installedApps; }
    const QList<ProjectLibraryItem> &projectLibrary() const { return m_projectLibrary; }
    const QList<ProjectSnapshotSummary> &projectSnapshots() const { return m_projectSnapshots; }
    const QString &runLog() const { return m_runLog; }
    bool isRunning() const { return m_isRunning; }
    bool isRecordingFlow() const { return m_isRecordingFlow; }
    const std::optional<QString> &lastError() const { return m_lastError; }
    const std::optional<QString> &lastManualCaptureURL() const { return m_lastManualCaptureURL; }
    const std::optional<QImage> &recorderPreviewImage() const { return m_recorderPreviewImage; }
    QSizeF recorderPreviewPixelSize() const { return m_recorderPreviewPixelSize; }
    double recorderPreviewScale() const { return m_recorderPreviewScale; }
    // Screen sizes in points of the devices seen running, by UDID.
    const QHash<QString, QSizeF> &devicePointSizes() const { return m_devicePointSizes; }
    const QString &simulatorEventRecordingStatus() const { return m_simulatorEventRecordingStatus; }
    // key: RunProgress::key(language, deviceID)
    const QHash<QString, RunProgress> &runProgress() const { return m_runProgress; }
    const std::optional<RunOutcome> &lastRunOutcome() const { return m_lastRunOutcome; }
    const std::optional<ReferenceSeconds> &lastRecordedActionAt() const { return m_lastRecordedActionAt; }
    bool simulatorEventMonitorInstalled() const { return m_simulatorEventMonitorInstalled; }
    // A press in the Simulator window still waiting for its release.
    const std::optional<SimulatorMouseDown> &simulatorMouseDown() const { return m_simulatorMouseDown; }
    // The generation run in flight (one worker), finished or not.
    const QFuture<void> &runTask() const { return m_runTask; }

    // False for a front that enters taps itself (the command line's scripted
    // recorder): a recording then installs no desktop-wide click monitor.
    bool observesDesktopClicks() const { return m_observesDesktopClicks; }
    void setObservesDesktopClicks(bool observes) { m_observesDesktopClicks = observes; }
    // The clock that recorded waits are measured by: real time, except for
    // a front that plays a script, whose clock moves only by the waits the
    // script asks for. Clicks in the Simulator window always go by real time.
    void setRecordingClock(std::function<ReferenceSeconds()> clock) { m_recordingClock = std::move(clock); }

    // Fixed tuning values: part of the model, not settings.
    static constexpr double minimumRecordedDelay = 0.6;
    static constexpr double maximumRecordedDelay = 60.0;
    static constexpr double replayWaitScale = 0.9;
    static constexpr double minimumReplayWait = 0.3;
    static constexpr double maximumReplayWait = 3.0;
    static constexpr double screenshotDriftThreshold = 0.18;

    static QString idleRecordingStatus()
    {
        return QStringLiteral("Recording listens to clicks and drags in the real Simulator window.");
    }

    const QString &packageRoot() const { return m_packageRoot; }
    PlatformServices &platform() const { return *m_platform; }

    // Announces a change of state: `changed()` follows once, on the next
    // turn of the event loop, however many fields changed meanwhile, so a
    // view re-reads once per turn and never half-way through an operation.
    void notifyChanged();

    // Appends one message to the run log; a line feed is added when missing.
    void appendLog(const QString &message);
    void setLastError(const QString &message);
    // lastError = prefix + the error's text. A tool's long output is cut to
    // its end in that text; the whole of it goes to the run log (and so to
    // the diagnostics).
    void reportError(const QString &prefix, const std::exception &error);
    void clearLastError();

    // ----------------------------------------- project and workspace (model/)
    QString workspaceDirectory() const;        // packageRoot/.quillmark
    QString projectsDirectory() const;         // workspace/projects
    QString snapshotsDirectory() const;        // workspace/project-snapshots
    QString outputRootDirectory() const;       // packageRoot/output
    QString projectFileURL(const QString &projectID) const;
    QString defaultOutputDirectory(const std::optional<QString> &projectID,
                                   const QString &displayName) const;
    static QString displayName(const ScreenshotProject &project);
    void normalizeLoadedProject(ScreenshotProject &project) const;

    // Every read-modify-write of the project runs inside one of these. It
    // holds the lock on the workspace that every Vantrel process on this
    // data root shares, and first takes over the saved project when another
    // process changed it, so that no process undoes another's change.
    // Changes nest: an inner one shares the outer one's lock.
    class ProjectChange
    {
    public:
        // Without `takeOverSaved` (a save outside any change) the lock is
        // taken but this process's copy stays as it is.
        explicit ProjectChange(AppModel &model, bool takeOverSaved = true);
        ~ProjectChange();
        ProjectChange(const ProjectChange &) = delete;
        ProjectChange &operator=(const ProjectChange &) = delete;

    private:
        AppModel &m_model;
    };
    QString workspaceLockFile() const; // workspace/.workspace.lock
    // Takes over the saved project when its file differs from what this
    // process last read or wrote.
    void reloadProjectIfChangedOnDisk();
    // What a killed process left behind, put right at the next start under
    // the workspace lock: an interrupted renumbering of checkpoint images is
    // finished or undone, hidden temporary files are removed.
    void recoverInterruptedWork();
    void recoverInterruptedCheckpointOrder();
    void removeLeftoverTemporaryFiles();

    // Start-up: load the saved project (or save a blank one), then bring the
    // rest of the state up to date. Fronts call this once after creation.
    void bootstrap(); // loadSavedProject(), then refreshAfterLoad()
    void refreshAfterLoad();
    // False when the saved project could not be loaded (lastError says why);
    // true once it is current, even when saving it back failed.
    bool loadSavedProject();
    bool saveProject(); // false when the save failed (lastError is set)
    void writeCurrentProjectID();
    void ensureProjectIdentityAndOutputDirectory(const QString &displayName,
                                                 bool preferAppSpecificOutput);
    void configureBlankProject(const QString &name);
    static QString projectTimestamp();
    void resetProjectRuntimeState(const QString &message);

    // The project's own choices, as a front edits them; each saves at once.
    void setOutputDirectory(const QString &path);
    void revealOutputDirectory();
    // The launch settings' setters sit with the generator configuration below.
    // Adds or removes a device of the run; the attached one stays first.
    void toggleGenerationDevice(const QString &udid);
    // The launch details of the checkpoint at `index` (0-based) in screens.
    void setScreenDetails(qsizetype index, const QString &state, const QString &sampleName, double launchWaitSeconds);

    // Languages.
    void toggleLanguage(const QString &code);
    void addCustomLanguage(const QString &text);

    // Library and snapshots.
    void refreshProjectLibrary();
    std::optional<ProjectLibraryItem> projectLibraryItem(const QString &path) const;
    void openProject(const ProjectLibraryItem &item);
    void renameCurrentProject(const QString &name);
    void deleteProject(const ProjectLibraryItem &item);
    void deleteCurrentProjectAndCreateReplacement();
    void refreshProjectSnapshots();
    std::optional<QString> snapshotCurrentProject(const QString &prefix);
    void duplicateProjectSnapshot();
    void restoreProjectSnapshot(const ProjectSnapshotSummary &snapshot);
    void deleteManagedOutputDirectoryIfSafe(const ScreenshotProject &project);
    // True when the item went to the Trash, false when it was deleted
    // because no Trash is available here; throws when neither worked.
    bool trashOrRemove(const QString &path);
    // Archives the current project and starts a blank one with this name.
    void startNewProject(const QString &name);
    // A snapshot on request, listed at once; the location, or nothing on failure.
    std::optional<QString> archiveProjectSnapshot();

    // ------------------------------------------- simulator integration (simulator/)
    // ProcessRunner::run on a background job, awaited (packageRoot as the
    // working directory). Throws what the runner throws.
    ProcessRunner::Result runProcessOffMain(const QString &command, const QStringList &arguments);
    // Waits on a background job until `process` has exited, keeping the event
    // loop live, and returns its exit status (128 + signal when it was killed).
    static qint32 waitForProcess(const std::shared_ptr<ChildProcess> &process);

    void refreshDevices();
    void attachToBootedSimulator();
    // What a successful attach starts on the main thread without waiting:
    // installed apps, then the preview.
    void refreshAfterAttach();
    // The UDID every device operation acts on, or nothing. An operation: with
    // no device chosen yet it lists the simulators and adopts the only booted one.
    std::optional<QString> activeDeviceID();
    // The device the project is attached to now, as a cheap read.
    std::optional<QString> attachedDeviceID() const;
    // The state the simulators last listed gave this device ("Booted",
    // "Shutdown", ...), or "" when it was not among them.
    QString deviceState(const QString &udid) const;
    // After a device refresh: attaches the one booted simulator quietly (the
    // chosen bundle stays) and returns it; nothing when not exactly one is booted.
    std::optional<QString> adoptSoleBootedDevice();
    double simulatorDisplayScale(const QString &device); // throws AppError
    // Learns the device's screen size in points (devicePointSizes); a device
    // that is not running stays unknown.
    void refreshDevicePointSize(const QString &device);
    QString displayNameForDeviceID(const QString &udid) const;

    void refreshInstalledApps();
    void selectInstalledApp(const InstalledSimulatorApp &app);
    void chooseAppBundle();
    void setAppBundle(const QString &path);
    void openTargetApp();
    // Device operations used by generation throw AppError instead of setting lastError.
    void ensureRecordedAppInstalled(const QString &device);
    void launchRecordedApp(const QString &device, const QString &language);
    void overrideStatusBar(const QString &device);
    void resetStatusBar(const QString &device);

    void refreshRecorderPreview();

    // ---------------------------------------------------- recording (recorder/)
    QString manualCaptureDirectory() const; // outputDirectory/manual
    QStringList manualCaptureURLs() const;  // checkpoint images, natural order
    static std::optional<qint64> manualCaptureNumber(const QString &path);
    bool isManualCaptureURL(const QString &path) const;
    std::optional<QString> existingLastManualCaptureURL() const;

    // The recorder: a recording collects operations in pendingOperations
    // until a checkpoint takes them.
    void startFlowRecording();
    void stopFlowRecording();
    void resetRecordedFlow();
    bool canResetRecordedFlow() const;
    void addRecordedType(const QString &text);
    // A tap or swipe (device points) entered without the Simulator window,
    // as the scriptable recorder does: performed on the device at once and
    // recorded like a click in the window.
    void addRecordedGesture(const OperationDraft &operation);
    // Both of the above: perform on the device, then record with its wait.
    void recordPerformedOperation(const OperationDraft &operation, const QString &noDeviceMessage,
                                  const QString &failurePrefix);
    void startSimulatorEventMonitoring();
    void stopSimulatorEventMonitoring();
    // The desktop's monitor ended by itself (its display went away): the
    // recording stops and lastError says why.
    void handleSimulatorEventMonitorEnded(const QString &reason);
    // Ends a recording that cannot go on, keeping the saved checkpoints, and
    // tells why.
    void stopFlowRecordingBecause(const QString &reason);
    // After a recorded action: the preview shows the screen the app moved
    // to; when it cannot be taken because the attached simulator is no
    // longer booted, the recording stops instead of recording clicks on
    // whatever the Simulator window shows next.
    void refreshPreviewAfterRecordedAction();
    // `event.location` is the pointer position when the event happened.
    void handleSimulatorMouseEvent(const DesktopMouseEvent &event, ReferenceSeconds now = ReferenceDate::now());
    std::optional<OperationDraft> recordedDelayOperation(ReferenceSeconds actionDate) const;
    void appendRecordedOperation(const OperationDraft &operation, ReferenceSeconds actionDate);
    qsizetype recordedInputActionCount() const;
    bool canSaveNextFlowCheckpoint() const;
    // What was recorded since the last checkpoint, as the status line words
    // it: "Wait 1.2s", "Tap 147, 790".
    QStringList pendingOperationDescriptions() const;
    // Replays operations on the device now, outside any generation run.
    // Throws what the replay runner throws.
    void perform(const QList<OperationDraft> &operations, const QString &device);

    // Checkpoints: the i-th entry of project.screens with the manual screen of index i.
    QList<ManualScreenDraft> manualScreens() const;
    qint64 nextManualCaptureIndex() const; // manualCaptureIndex; 1 when unset or below 2
    static QString checkpointFileName(qint64 index, const QString &name); // "03-settings.png"
    QString defaultManualCaptureName() const;
    QString manualCaptureName(const QString &nameOverride) const;
    QString manualCaptureFilenamePreview(const QString &nameOverride) const;
    QString resolvedManualCaptureName(const QString &nameOverride, const QString &screenshotPath);
    void captureManualScreenshot(const QString &nameOverride);
    // `xcrun simctl io <device> screenshot <path>`, blocking; throws.
    void takeSimulatorScreenshot(const QString &device, const QString &path);
    void retakeCheckpoint(const ManualScreenDraft &checkpoint);
    void deleteCheckpoint(const ManualScreenDraft &checkpoint);
    void moveCheckpoint(const ManualScreenDraft &checkpoint, qint64 offset);
    // A new name for the checkpoint, its image and its generated screenshots.
    void renameCheckpoint(const ManualScreenDraft &checkpoint, const QString &name);
    void deleteLastManualCapture();
    bool canDeleteLastManualCapture() const;
    QString manualCaptureURL(const ManualScreenDraft &checkpoint) const;
    // The checkpoint's image, or AppError when its name leads outside "manual".
    QString checkedManualCaptureURL(const ManualScreenDraft &checkpoint) const;
    // Throws AppError when "manual" itself leads outside the output folder.
    void checkManualCaptureDirectory() const;
    void upsertManualScreen(qint64 index, const QString &name, const QString &filename);
    void removeManualScreen(qint64 index);
    void removeRecordedScreen(qint64 index);
    void rewriteCheckpointOrder(QList<ManualScreenDraft> checkpoints); // throws AppError
    void moveScreenshotToTrash(const QString &path);
    void removeManualCheckpointFiles();
    void syncManualScreensFromExistingCapturesIfNeeded();

    // ------------------------------------------------- generation (generation/)
    // The recorded run: one worker that changes state only through calls onto
    // the main thread. start cancels a run in flight first; cancelRun ends a
    // running build at once.
    void startRecordedAttachedCapture();
    void cancelRun();
    QString generationLockFile() const; // workspace/.generation.lock, held for a whole run
    static void runRecordedAttachedCapture(QPointer<AppModel> model, std::shared_ptr<std::atomic_bool> cancelled);
    void validateRecordedAttachedProject() const; // throws AppError
    static bool flowNeedsReplayEngine(const QList<ScreenDraft> &screens);
    static void ensureXCUITestReplayAvailableIfNeeded(const QList<ScreenDraft> &screens); // throws AppError
    static QString driftStopMessage();
    // The heading and explanation to show when the last run stopped for drift.
    std::optional<DriftNotice> lastRunDriftNotice() const;
    // The run log from the start of the last generation run.
    QString lastRunLog() const;
    static RunOutcome cancelledOutcome(qint64 completed, qint64 total);

    // What both kinds of run share: the worker is started once the previous
    // run has wound down; each ends in one of three endings (on the main
    // thread) that set lastRunOutcome and free the model.
    using RunJob = void (*)(QPointer<AppModel> model, std::shared_ptr<std::atomic_bool> cancelled);
    void startRunTask(RunJob job);
    // The worker has checked the project: every pair starts at zero and the
    // run shows as running.
    void markRunStarted();
    // The generator process of a build generation, so that cancelRun can end
    // it; released once it has exited (only if it is still the run's).
    void adoptRunProcess(std::shared_ptr<ChildProcess> process);
    void releaseRunProcess(const std::shared_ptr<ChildProcess> &process);
    void endRun(const RunOutcome &outcome);
    void endRunSucceeded(const QString &detail);
    void endRunCancelled();
    void endRunFailed(const QString &description); // also the last error

    // Generation from the chosen .app build by the command-line generator:
    // validate, write the configuration, find the generator, run it with
    // "run" and the file's path in packageRoot, its output going to the run
    // log as it arrives (and its per-screenshot lines to runProgress).
    // cancelRun ends it like the recorded run.
    struct GeneratorCommand
    {
        QString executable;
        QStringList leadingArguments;
        bool operator==(const GeneratorCommand &) const = default;
    };
    void startBuildGeneration();
    static void runBuildGeneration(QPointer<AppModel> model, std::shared_ptr<std::atomic_bool> cancelled);
    // In this order: VANTREL_CLI, QUILLMARK_CLI, "vantrel" in the
    // application's own resources (beside the running executable outside a
    // macOS bundle), the .build/{debug,release}/{vantrel,quillmark} outputs
    // under packageRoot, `which vantrel`, and in a development checkout the
    // vantrel of the build folder the application runs from.
    static std::optional<GeneratorCommand> findGeneratorCommand(const QString &packageRoot);
    static QString generatorNotFoundMessage();
    // One line of the generator's output: logged, and counted when it reports a screenshot.
    void handleGeneratorOutputLine(const QString &line);

    // Progress per language and device.
    QHash<QString, RunProgress> initializedRunProgress() const;
    void updateRunProgress(const QString &language, const QString &deviceID, qint64 completed, RunProgressState state);
    void incrementRunProgress(const QString &language, const QString &deviceID);
    void markUnfinishedProgressIdle();
    void markRunningProgressFailed();
    qint64 completedRunProgressCount() const;
    // The cells of the progress grid in the order every front shows them.
    QList<RunProgressCell> runProgressCells() const;

    // The recorded flow as replay steps; recorded waits are shortened and clamped.
    static double replayWait(double recordedSeconds);
    static QList<XCTestReplayStep> replaySteps(const QList<ScreenDraft> &screens);
    // A generator configuration's screens in one language: a launch with the
    // language and the launch arguments before each screen's operations.
    static QList<XCTestReplayStep> replaySteps(const GeneratorConfig &config, const QString &language);

    // Drift of generated screenshots from the recorded references.
    QList<ScreenshotValidationIssue> validateGeneratedScreens(const QString &outputDirectory, const QString &language,
                                                              const QString &deviceName); // throws AppError
    std::optional<QString> referenceCheckpointURL(qint64 screenNumber, const QString &fallbackName) const;
    // Whether a reference stands for the device a screenshot was taken on:
    // the two have the same pixel size.
    static bool isReferenceForDevice(const QString &reference, const QString &screenshot);
    // The picture a screenshot is held against: its checkpoint's reference
    // when that stands for this device; on a device of another size, the
    // first language's screenshot of the checkpoint on that device; nothing
    // when the screenshot is kept unchecked.
    std::optional<QString> driftBaselineURL(qint64 screenNumber, const QString &screenName, const QString &screenshot,
                                            const QString &language, const QString &deviceName) const;
    // outputDirectory/<language>/<device name>, both made safe for a path.
    QString generatedOutputDirectory(const QString &language, const QString &deviceName) const;
    QString needsReviewDirectory(const QString &language, const QString &deviceName) const;
    void moveSuspiciousScreenshotToNeedsReview(const QString &url, const QString &filename, const QString &language,
                                               const QString &deviceName); // throws AppError

    // What the configuration file carries besides the app, devices and
    // languages, one field at a time. Each saves the project, or sets
    // lastError and changes nothing when it refuses the value.
    void setLaunchWaitSeconds(double seconds);
    void setResetAppData(bool reset);
    void setOpenSimulator(bool open);
    void setGlobalLaunchArguments(const QStringList &arguments);
    void setStateArgumentName(const QString &name);
    void setSampleNameArgumentName(const QString &name); // empty: no sample arguments
    // Screens by number, from 1. A screen added here is reached by its launch
    // state alone (no recorded navigation); it gets a checkpoint record
    // without an image, so later checkpoints stay paired with their screens.
    void addScreen(const QString &name);
    void renameScreen(qint64 number, const QString &name); // also its checkpoint and image
    void setScreenState(qint64 number, const QString &state);
    void setScreenSampleName(qint64 number, const QString &sampleName);
    void setScreenLaunchWaitSeconds(qint64 number, double seconds); // 0: the project's wait

    // The configuration file for the command-line generator.
    void validateRunnableProject() const; // throws AppError
    QString generatedConfigURL() const;   // workspace/generated-config.yaml
    QString writeGeneratedConfig() const; // throws AppError; returns the file's path

    // ------------------------------------------------ readiness and review (app/)
    // Readiness: derived on every read from the project and platform facts.
    QList<ProductPreflightCheck> preflightChecks() const;
    // Asks `xcrun --find xcodebuild` again and keeps the answer for readiness.
    void refreshReplayEngineAvailability();
    static bool isReplayEngineAvailable(); // asks the tools; readiness keeps the last answer
    bool canRunAutomatedCapture() const;
    bool canRunRecordedAttachedCapture() const;
    bool hasCompleteRunSelection() const; // app, devices, languages and checkpoints chosen
    std::optional<QString> recordedFlowReplayIssue() const;
    static std::optional<QString> recordedFlowReplayIssue(const QList<ScreenDraft> &screens);
    QString runReadinessMessage() const;
    qint64 runDeviceCount() const;
    // Taps and swipes replay in points: for a generation device whose size
    // is known and differs from the device the flow was recorded on, the
    // line that says so; nothing otherwise.
    std::optional<QString> recordedDeviceNote(const QString &device) const;
    QStringList recordedDeviceNotes() const; // for every generation device
    qint64 runTotalCount() const;
    QList<QuickStartRow> quickStartRows();

    void refreshReviewImages();
    static QString noReferenceNote(); // ReviewImage::note of an image kept unchecked
    QList<ReviewImage> needsReviewImages() const;         // under "_needs-review/"
    QList<GeneratedLanguageGroup> groupedImages() const;  // gallery cards, by language
    // The checkpoint reference a held-back screenshot drifted from, if it is there.
    std::optional<QString> reviewReferenceURL(const ReviewImage &image) const;
    void openReviewImage(const ReviewImage &image);
    void revealReviewImage(const ReviewImage &image);

    // The localization check's warnings of the last run, kept beside the
    // screenshots (LocalizationWarnings) and read fresh on every call.
    QString localizationWarningsURL() const;
    QList<LocalizationWarning> localizationWarnings() const; // dismissed ones marked
    QList<LocalizationWarning> activeLocalizationWarnings() const; // not dismissed
    // Stores a run's warnings, keeping earlier dismissals; returns them with
    // the dismissals applied. Throws AppError.
    QList<LocalizationWarning> recordLocalizationWarnings(const QList<LocalizationWarning> &warnings);
    // Hides the warning of this checkpoint file and language for good (on
    // every device). False, with lastError set, when it cannot be stored.
    bool dismissLocalizationWarning(const QString &file, const QString &language);

    // The contact sheet: per device folder, the project's checkpoints by its
    // languages, as the output folder holds them now.
    ContactSheet::Page contactSheetPage() const;
    // Writes outputDirectory/index.html and its thumbnails (made off the main
    // thread while the event loop runs); the page's location, or nothing
    // with lastError set.
    std::optional<QString> writeContactSheet();
    void openContactSheet(); // writeContactSheet(), then open it in the default application

    // Writes workspace/diagnostics.txt; its location, or nothing (lastError set).
    std::optional<QString> writeDiagnostics();
    void exportDiagnostics(); // writeDiagnostics(), then reveal the file
    // The shipped guide; nothing (lastError set) when this build lacks it.
    std::optional<QString> locateCustomerGuide();
    void openCustomerGuide();

signals:
    // Any state change; fronts re-read what they show.
    void changed();

private:
    void assertMainThread() const;
    template <class T> void editProject(T &field, const T &value);
    // Opening, restoring or replacing a project ends a flow recording first.
    void stopFlowRecordingIfNeeded();
    void noteUncheckedImages(QList<ReviewImage> &images) const;
    // Makes `document` the current project and starts its session afresh; the
    // run log becomes `logPrefix` followed by the project's name. When the
    // identity file cannot be written the previous project stays current.
    void switchToProject(const ScreenshotProject &document, const QString &logPrefix);
    // One run per workspace, whichever process starts it: two runs would
    // share the runner project and mix their outputs. A lock left by a
    // process that died is taken over. False with lastError set when taken.
    bool takeGenerationLock();

    // Tests and benchmarks arrange scenarios through it (tests/ModelFixture.h);
    // no front does.
    friend class ModelState;

    ScreenshotProject m_project;
    QList<SimulatorDevice> m_availableDevices;
    QList<ReviewImage> m_reviewImages;
    QList<OperationDraft> m_pendingOperations;
    QList<InstalledSimulatorApp> m_installedApps;
    QList<ProjectLibraryItem> m_projectLibrary;
    QList<ProjectSnapshotSummary> m_projectSnapshots;
    QString m_runLog;
    bool m_isRunning = false;
    bool m_isRecordingFlow = false;
    std::optional<QString> m_lastError;
    std::optional<QString> m_lastManualCaptureURL;
    std::optional<QImage> m_recorderPreviewImage;
    QSizeF m_recorderPreviewPixelSize{0, 0};
    double m_recorderPreviewScale = 1.0;
    QHash<QString, QSizeF> m_devicePointSizes;
    QString m_simulatorEventRecordingStatus = idleRecordingStatus();
    QHash<QString, RunProgress> m_runProgress;
    std::optional<RunOutcome> m_lastRunOutcome;
    std::optional<ReferenceSeconds> m_lastRecordedActionAt;
    bool m_simulatorEventMonitorInstalled = false;
    bool m_observesDesktopClicks = true;
    std::function<ReferenceSeconds()> m_recordingClock = ReferenceDate::now;
    std::optional<SimulatorMouseDown> m_simulatorMouseDown;
    // What `xcrun --find xcodebuild` said at the last refresh, so that
    // readiness can be read as often as a view likes without a process.
    bool m_replayEngineAvailable = false;
    // Where the last generation run's lines begin in the run log.
    qsizetype m_lastRunLogStart = 0;

    QFuture<void> m_runTask;
    // A generator process that runs for the whole of a run; cancelRun ends it.
    std::shared_ptr<ChildProcess> m_runProcess;
    // The run's stop flag, shared with its worker.
    std::shared_ptr<std::atomic_bool> m_runCancelRequested = std::make_shared<std::atomic_bool>(false);
    // Held while this process runs a generation, so that no other process
    // starts one in the same workspace (they would share the runner project
    // and mix their outputs).
    std::unique_ptr<QLockFile> m_generationLock;

    QString m_packageRoot;
    std::unique_ptr<PlatformServices> m_platform;
    bool m_changeQueued = false;

    // The workspace lock while a ProjectChange is open (see there).
    std::unique_ptr<QLockFile> m_workspaceLock;
    int m_projectChangeDepth = 0;
    bool m_workspaceLockFailed = false;
    // The project file as this process last read or wrote it.
    QByteArray m_savedProjectBytes;

};
