#pragma once
// End-to-end plumbing: the real `vantrel` binary run against a private world
// of the device stand-in. Each DeviceWorld has its own data root
// (VANTREL_HOME), its own stand-in state (DEVICESIM_HOME, no simulated
// pauses) and the stand-in's xcrun, xcodebuild and open first on PATH.

#include <QHash>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>

namespace E2E {

struct Run
{
    int status = -1; // -1 when the program crashed or did not finish
    QString out;
    QString err;
};

// The default world of the stand-in (tools/devicesim/README.md).
inline const QString iPhoneUdid = QStringLiteral("6E1A9C2B-4D3F-4B7A-9E51-7C2D8A4F1B36");
inline const QString iPadUdid = QStringLiteral("B8F02D6C-1E7A-4C39-8D25-3A9E6F0C4D17");
inline const QString demoBundleId = QStringLiteral("com.vantrel.demo.Trips");
inline const QString demoAppName = QStringLiteral("Trips Caf\u00e9");
// The phone's folder in a run's output: its name, made safe for a path.
inline const QString iPhoneFolder = QStringLiteral("iPhone-15-Pro");

// The demo app's tab bar recorded as four checkpoints, one per tab, and the
// screenshots a run of it makes per language and device.
inline const QStringList tabScreenshots{QStringLiteral("01-trips.png"), QStringLiteral("02-explore.png"),
                                        QStringLiteral("03-saved.png"), QStringLiteral("04-settings.png")};

// The PNG files below `folder`, as sorted paths relative to it.
QStringList pngsUnder(const QString &folder);

// A generate run's output without its "Progress: " lines: the run log in its
// own order. Progress is printed whenever the model settles, which may fall
// between two log lines of one step.
QString withoutProgress(const QString &out);

// Whether `condition` holds within `timeoutMs`, asked every 100 ms.
bool eventually(const std::function<bool()> &condition, int timeoutMs = 20000);

// Reads a started program's output until `text` appears (or a minute passes).
QString readUntil(QProcess &process, const QString &text);

// The recorded operations of each checkpoint of a saved project, as "tap X Y",
// "swipe X1 Y1 X2 Y2" and "type TEXT"; waits ("wait S") only when asked for,
// since those of a person clicking vary from run to run.
QStringList screenActions(const QJsonObject &project, bool withWaits = false);

// A started program that is ended, if it still runs, when the test ends early.
class OwnedProcess : public QProcess
{
public:
    ~OwnedProcess() override;
    // The exit status once it ends by itself within `timeoutMs`; -1 when it
    // crashed or still runs.
    int exitStatusWithin(int timeoutMs);
};

class DeviceWorld
{
public:
    DeviceWorld();

    QString root() const { return m_dir.filePath(QStringLiteral("root")); }
    QString devicesimHome() const { return m_dir.filePath(QStringLiteral("devicesim")); }
    // A scratch folder, also the working directory of every program run.
    QString scratch() const { return m_dir.filePath(QStringLiteral("scratch")); }

    // The environment every program of this world runs in; `extra` wins.
    // It has no DISPLAY unless `extra` gives one: no window of a test
    // opens on the desktop of whoever runs the tests.
    QProcessEnvironment environment(const QHash<QString, QString> &extra = {}) const;

    Run vantrel(const QStringList &arguments, const QHash<QString, QString> &extra = {}) const;
    // vantrel with no simulator tool on PATH (commands that need no device
    // start quickly) and privateHome().
    Run offline(const QStringList &arguments) const;
    // HOME and XDG_DATA_HOME inside the scratch folder, for a command whose
    // Trash must land inside the test's own folder.
    QHash<QString, QString> privateHome() const;
    // `vantrel record` reading `script` from its standard input.
    Run record(const QByteArray &script, const QHash<QString, QString> &extra = {}) const;
    // Starts vantrel without waiting (for long runs that a test cancels).
    void startVantrel(QProcess &process, const QStringList &arguments) const;
    // Starts any program of this world without waiting.
    void start(QProcess &process, const QString &program, const QStringList &arguments,
               const QHash<QString, QString> &extra = {}) const;
    // Set-up and inspection of the stand-in: devicesim device add, fault set, state...
    Run devicesim(const QStringList &arguments, const QHash<QString, QString> &extra = {}) const;
    // The stand-in answering as xcrun, as the product would call it.
    Run xcrun(const QStringList &arguments) const;

    // Attaches the phone, chooses the demo app, adds `languages` to en-US and
    // records the tab bar (tabScreenshots). What failed, or empty.
    QString recordTabFlow(const QStringList &languages) const;

    // The current project as saved (workspace/project.json).
    QJsonObject savedProject() const;
    // Rewrites the current project's saved file and its mirror with `edit`
    // applied, as another program would, for the next command to load.
    void editProject(const std::function<void(QJsonObject &)> &edit) const;
    // The image file names of the saved checkpoints, in order.
    QStringList checkpointFiles() const;
    // The stand-in's state (devicesim state).
    QJsonObject standInState() const;
    // The demo app's session on the booted iPhone, as the stand-in keeps it.
    QJsonObject demoSession() const;
    // Build processes (xcodebuild) of this world that are still alive.
    QStringList runningBuilds() const;

private:
    Run run(const QString &program, const QStringList &arguments, const QHash<QString, QString> &extra,
            const QByteArray &input = {}) const;

    QTemporaryDir m_dir;
};

} // namespace E2E
