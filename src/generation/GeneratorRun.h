#pragma once
// The command-line generator's run: every screen of a configuration on every
// device and in every language, from the simulator build it names. For each
// device (in order) the simulator is booted and, when asked, shown; for each
// language (in order) the build is installed (after removing it, with
// resetAppData, so every language starts from a clean container), the status
// bar is set as for store screenshots, and one build and test of the replay
// runner launches the app once per screen with that screen's arguments,
// replays its operations and takes its screenshot into
// outputDirectory/<language>/<device>/NN-<screen>.png. The status bar is
// reset afterwards whatever happened.
//
// No model state is involved: the run is driven by the configuration alone
// and tells its listener what it does.

#include "GeneratorConfig.h"
#include "simulator/SimulatorDevice.h"

#include <QHash>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>

class GeneratorRun
{
public:
    struct Screenshot
    {
        qint64 number = 0; // of all screenshots of the run, from 1
        qint64 total = 0;
        QString language;
        QString deviceName;
        QString fileName;  // "02-Settings.png"
    };

    // Called on the thread that runs the run.
    struct Listener
    {
        std::function<void(const QString &message)> log;
        std::function<void(const Screenshot &screenshot)> screenshotSaved;
    };

    enum class Ending { succeeded, failed, cancelled };
    struct Result
    {
        Ending ending = Ending::succeeded;
        qint64 completed = 0;
        qint64 total = 0;
        QString failure; // what failed, where, and the tool's own message
    };

    // `workspaceDirectory` holds the replay runner project; simulator
    // commands run in `workingDirectory`. Setting `cancelled` stops the run
    // between steps and ends the command in flight.
    GeneratorRun(GeneratorConfig config, QString workspaceDirectory, QString workingDirectory, Listener listener,
                 std::shared_ptr<std::atomic_bool> cancelled);

    // The checks that need this machine (the build on disk, the simulators);
    // any problem refuses the configuration. Throws AppError when the
    // simulators cannot be listed.
    QList<ConfigProblem> check();

    // Blocks for the whole run; call it after check() on a worker thread.
    Result run();

private:
    struct Cancelled
    {
    };

    void log(const QString &message) const;
    void checkCancelled() const;
    void xcrun(const QStringList &arguments) const;
    void prepareDevice(const SimulatorDevice &device);
    void runLanguage(const SimulatorDevice &device, const QString &language, bool installNeeded);
    void replay(const SimulatorDevice &device, const QString &language);
    void resetStatusBar(const QString &device) const;
    QString screenDescription(qsizetype index) const;

    GeneratorConfig m_config;
    QString m_workspace;
    QString m_workingDirectory;
    Listener m_listener;
    std::shared_ptr<std::atomic_bool> m_cancelled;
    QHash<QString, SimulatorDevice> m_devices; // by UDID, from check()

    qint64 m_completed = 0;
    QString m_doing; // what the run does right now, for a failure's message
};
