#include "E2ESupport.h"

#include "TestSupport.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace E2E {

QStringList pngsUnder(const QString &folder)
{
    QStringList found;
    QDirIterator it(folder, {QStringLiteral("*.png")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        found.append(QDir(folder).relativeFilePath(it.next()));
    found.sort();
    return found;
}

QString withoutProgress(const QString &out)
{
    QStringList lines = out.split(QLatin1Char('\n'));
    lines.removeIf([](const QString &line) { return line.startsWith(QLatin1String("Progress: ")); });
    return lines.join(QLatin1Char('\n'));
}

bool eventually(const std::function<bool()> &condition, int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QTest::qWait(100);
    }
    return true;
}

QString readUntil(QProcess &process, const QString &text)
{
    QString out;
    QElapsedTimer waited;
    waited.start();
    while (!out.contains(text) && waited.elapsed() < 60000) {
        process.waitForReadyRead(200);
        out += QString::fromUtf8(process.readAllStandardOutput());
    }
    return out;
}

QStringList screenActions(const QJsonObject &project, bool withWaits)
{
    QStringList screens;
    for (const QJsonValue &screen : project[QStringLiteral("screens")].toArray()) {
        QStringList actions;
        for (const QJsonValue &value : screen[QStringLiteral("operations")].toArray()) {
            const QJsonObject operation = value.toObject();
            const QString kind = operation.keys().first();
            const QJsonObject p = operation[kind].toObject();
            const auto number = [&](const char *key) { return QString::number(p[QLatin1String(key)].toInt()); };
            if (kind == QLatin1String("tap"))
                actions.append(QStringLiteral("tap ") + number("x") + QLatin1Char(' ') + number("y"));
            else if (kind == QLatin1String("swipe"))
                actions.append(QStringList{QStringLiteral("swipe"), number("startX"), number("startY"), number("endX"),
                                           number("endY")}
                                   .join(QLatin1Char(' ')));
            else if (kind == QLatin1String("type"))
                actions.append(QStringLiteral("type ") + p[QStringLiteral("text")].toString());
            else if (kind != QLatin1String("wait"))
                actions.append(kind);
            else if (withWaits)
                actions.append(QStringLiteral("wait ") + QString::number(p[QStringLiteral("seconds")].toDouble()));
        }
        screens.append(actions.join(QStringLiteral(", ")));
    }
    return screens;
}

OwnedProcess::~OwnedProcess()
{
    if (state() != QProcess::NotRunning) {
        kill();
        waitForFinished(5000);
    }
}

int OwnedProcess::exitStatusWithin(int timeoutMs)
{
    const bool finished = waitForFinished(timeoutMs);
    return finished && exitStatus() == QProcess::NormalExit ? exitCode() : -1;
}

DeviceWorld::DeviceWorld()
{
    QDir().mkpath(root());
    QDir().mkpath(scratch());
    const Run shims = devicesim({QStringLiteral("shims"), m_dir.filePath(QStringLiteral("bin"))});
    if (shims.status != 0)
        qFatal("devicesim shims failed: %s", qPrintable(shims.err));
}

QProcessEnvironment DeviceWorld::environment(const QHash<QString, QString> &extra) const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("PATH"), m_dir.filePath(QStringLiteral("bin")) + QLatin1Char(':') + env.value(QStringLiteral("PATH")));
    env.insert(QStringLiteral("VANTREL_HOME"), root());
    env.insert(QStringLiteral("DEVICESIM_HOME"), devicesimHome());
    env.insert(QStringLiteral("DEVICESIM_TIME_SCALE"), QStringLiteral("0"));
    env.remove(QStringLiteral("QUILLMARK_OUTPUT_DIR"));
    env.remove(QStringLiteral("QUILLMARK_PROGRESS_FILE"));
    env.remove(QStringLiteral("DISPLAY"));
    for (auto it = extra.begin(); it != extra.end(); ++it)
        env.insert(it.key(), it.value());
    return env;
}

Run DeviceWorld::run(const QString &program, const QStringList &arguments, const QHash<QString, QString> &extra,
                     const QByteArray &input) const
{
    OwnedProcess process;
    start(process, program, arguments, extra);
    if (!input.isNull()) {
        process.write(input);
        process.closeWriteChannel();
    }
    const int status = process.exitStatusWithin(120000);
    return {status, QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

QHash<QString, QString> DeviceWorld::privateHome() const
{
    const QString home = scratch() + QStringLiteral("/home");
    QDir().mkpath(home + QStringLiteral("/.local/share"));
    return {{QStringLiteral("HOME"), home}, {QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share")}};
}

Run DeviceWorld::vantrel(const QStringList &arguments, const QHash<QString, QString> &extra) const
{
    return run(TestSupport::vantrelBinary(), arguments, extra);
}

Run DeviceWorld::offline(const QStringList &arguments) const
{
    QHash<QString, QString> extra = privateHome();
    extra.insert(QStringLiteral("PATH"), scratch() + QStringLiteral("/no-tools"));
    return vantrel(arguments, extra);
}

Run DeviceWorld::record(const QByteArray &script, const QHash<QString, QString> &extra) const
{
    return run(TestSupport::vantrelBinary(), {QStringLiteral("record")}, extra, script);
}

void DeviceWorld::startVantrel(QProcess &process, const QStringList &arguments) const
{
    start(process, TestSupport::vantrelBinary(), arguments);
}

void DeviceWorld::start(QProcess &process, const QString &program, const QStringList &arguments,
                        const QHash<QString, QString> &extra) const
{
    process.setProcessEnvironment(environment(extra));
    process.setWorkingDirectory(scratch());
    process.start(program, arguments);
}

Run DeviceWorld::devicesim(const QStringList &arguments, const QHash<QString, QString> &extra) const
{
    return run(TestSupport::devicesimBinary(), arguments, extra);
}

Run DeviceWorld::xcrun(const QStringList &arguments) const
{
    return run(m_dir.filePath(QStringLiteral("bin/xcrun")), arguments, {});
}

QString DeviceWorld::recordTabFlow(const QStringList &languages) const
{
    QList<QStringList> steps{{QStringLiteral("attach")}, {QStringLiteral("select-app"), demoBundleId}};
    for (const QString &language : languages)
        steps.append({QStringLiteral("languages"), QStringLiteral("toggle"), language});
    for (const QStringList &step : steps)
        if (const Run result = vantrel(step); result.status != 0)
            return step.join(QLatin1Char(' ')) + QStringLiteral(": ") + result.err;
    const Run recorded = record("checkpoint trips\ntap 147 790\ncheckpoint explore\ntap 245 790\ncheckpoint saved\n"
                                "tap 343 790\ncheckpoint settings\nstop\n");
    return recorded.status == 0 ? QString() : QStringLiteral("record: ") + recorded.err;
}

QJsonObject DeviceWorld::savedProject() const
{
    return QJsonDocument::fromJson(TestSupport::readFile(root() + QStringLiteral("/.quillmark/project.json"))).object();
}

void DeviceWorld::editProject(const std::function<void(QJsonObject &)> &edit) const
{
    QJsonObject project = savedProject();
    edit(project);
    const QByteArray bytes = QJsonDocument(project).toJson(QJsonDocument::Compact);
    const QString workspace = root() + QStringLiteral("/.quillmark");
    const QString id = QString::fromUtf8(TestSupport::readFile(workspace + QStringLiteral("/current-project-id.txt")));
    TestSupport::writeFile(workspace + QStringLiteral("/projects/") + id + QStringLiteral(".json"), bytes);
    TestSupport::writeFile(workspace + QStringLiteral("/project.json"), bytes);
}

QStringList DeviceWorld::checkpointFiles() const
{
    QStringList names;
    for (const QJsonValue &checkpoint : savedProject()[QStringLiteral("manualScreens")].toArray())
        names.append(checkpoint[QStringLiteral("filename")].toString());
    return names;
}

QJsonObject DeviceWorld::standInState() const
{
    return QJsonDocument::fromJson(devicesim({QStringLiteral("state")}).out.toUtf8()).object();
}

QJsonObject DeviceWorld::demoSession() const
{
    for (const QJsonValue &device : standInState()[QStringLiteral("devices")].toArray()) {
        if (device[QStringLiteral("udid")].toString() != iPhoneUdid)
            continue;
        for (const QJsonValue &session : device[QStringLiteral("running")].toArray())
            if (session[QStringLiteral("bundleId")].toString() == demoBundleId)
                return session.toObject();
    }
    return {};
}

QStringList DeviceWorld::runningBuilds() const
{
    QProcess ps;
    ps.start(QStringLiteral("ps"), {QStringLiteral("-eo"), QStringLiteral("pid=,args=")});
    ps.waitForFinished();
    QStringList builds;
    for (const QString &line : QString::fromUtf8(ps.readAllStandardOutput()).split(QLatin1Char('\n')))
        if (line.contains(QLatin1String("xcodebuild")) && line.contains(root()))
            builds.append(line.trimmed());
    return builds;
}

} // namespace E2E
