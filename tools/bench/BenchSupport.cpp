#include "BenchSupport.h"

#include "replay/ChildProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <stdexcept>

namespace BenchSupport {

bool runTool(const QString &command, const QStringList &arguments, const QString &workingDirectory,
             const QHash<QString, QString> &extraEnvironment, QByteArray *standardOutput)
{
    QHash<QString, QString> environment = ChildProcess::currentEnvironment();
    for (auto it = extraEnvironment.begin(); it != extraEnvironment.end(); ++it)
        environment.insert(it.key(), it.value());
    try {
        ChildProcess child(command, arguments, workingDirectory, environment);
        child.waitForExit(-1);
        if (standardOutput)
            *standardOutput = child.output().standardOutput;
        return child.output().exitedNormally && child.output().exitStatus == 0;
    } catch (const std::runtime_error &) {
        return false;
    }
}

QString devicesimBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/tools/devicesim/devicesim"); }
QString vantrelBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/src/cli/vantrel"); }
QString timingShimBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/tools/bench/generation-timing-shim"); }

bool vantrel(const QString &root, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(vantrelBinary(), QStringList{QStringLiteral("--root"), root} + arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(120000);
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

namespace {

// Read by the timing shim (TimingShim.cpp).
constexpr const char *realToolsVariable = "VANTREL_BENCH_REAL_TOOLS";
constexpr const char *toolLogVariable = "VANTREL_BENCH_TOOL_LOG";

// A program that does nothing: /bin/true on Linux, /usr/bin/true on a Mac.
QString trueTool()
{
    return QFile::exists(QStringLiteral("/bin/true")) ? QStringLiteral("/bin/true") : QStringLiteral("/usr/bin/true");
}

} // namespace

std::optional<TimedTools> setUpTimedTools(const QString &folder)
{
    const TimedTools tools{folder + QStringLiteral("/timing-shims"), folder + QStringLiteral("/real-tools"),
                           folder + QStringLiteral("/tool-times.log")};
    QDir().mkpath(tools.shims);
    for (const char *tool : {"xcrun", "xcodebuild", "open"})
        QFile::link(timingShimBinary(), tools.shims + QLatin1Char('/') + QLatin1String(tool));
    qputenv("DEVICESIM_HOME", (folder + QStringLiteral("/devicesim")).toLocal8Bit());
    qputenv("DEVICESIM_TIME_SCALE", "0");
    qputenv(realToolsVariable, tools.realTools.toLocal8Bit());
    qputenv(toolLogVariable, tools.log.toLocal8Bit());
    qputenv("PATH", tools.shims.toLocal8Bit() + ':' + qgetenv("PATH"));
    const bool ready = runTool(devicesimBinary(), {QStringLiteral("init")}, folder)
                       && runTool(devicesimBinary(), {QStringLiteral("shims"), tools.realTools}, folder);
    return ready ? std::optional(tools) : std::nullopt;
}

ToolLog readToolLog(const QString &log)
{
    QFile file(log);
    ToolLog result;
    if (!file.open(QIODevice::ReadOnly))
        return result;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.isEmpty())
            continue;
        result.seconds += line.split(' ').value(1).toDouble();
        ++result.calls;
        ++result.callsByTool[QString::fromUtf8(line.split(' ').value(0))];
    }
    return result;
}

// The shim runs `true` as "xcrun" twenty times.
double shimCostMilliseconds(const TimedTools &tools, const QString &scratch)
{
    const QString fakeTools = scratch + QStringLiteral("/calibration-tools");
    QDir().mkpath(fakeTools);
    QFile::link(trueTool(), fakeTools + QStringLiteral("/xcrun"));
    qputenv(realToolsVariable, fakeTools.toLocal8Bit());
    QFile::remove(tools.log);
    constexpr int calls = 20;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < calls; ++i)
        runTool(tools.shims + QStringLiteral("/xcrun"), {}, scratch);
    const double outer = double(timer.nsecsElapsed()) / 1e6;
    qputenv(realToolsVariable, tools.realTools.toLocal8Bit());
    // /usr/bin/env and the spawn are the product's own cost and stay counted:
    // only what the shim adds around the tool is taken off.
    QElapsedTimer direct;
    direct.start();
    for (int i = 0; i < calls; ++i)
        runTool(trueTool(), {}, scratch);
    const double bare = double(direct.nsecsElapsed()) / 1e6;
    const double inner = readToolLog(tools.log).seconds * 1000;
    return std::max(0.0, (outer - bare - inner) / calls);
}

} // namespace BenchSupport
