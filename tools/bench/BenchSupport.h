#pragma once
// Small helpers shared by the generation benchmarks.

#include <QElapsedTimer>
#include <QHash>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

namespace BenchSupport {

// The median wall time of `repeats` runs of `job`, in milliseconds.
inline double medianMilliseconds(int repeats, const std::function<void()> &job)
{
    std::vector<double> times;
    for (int i = 0; i < repeats; ++i) {
        QElapsedTimer timer;
        timer.start();
        job();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// Runs a command through the product's child-process runner; false when it
// cannot be started or fails.
bool runTool(const QString &command, const QStringList &arguments, const QString &workingDirectory,
             const QHash<QString, QString> &extraEnvironment = {}, QByteArray *standardOutput = nullptr);

QString devicesimBinary();
QString vantrelBinary();
QString timingShimBinary();

// Runs a vantrel command on the data root `root`; `input` goes to its
// standard input. False when it fails.
bool vantrel(const QString &root, const QStringList &arguments, const QByteArray &input = {});

// The device tools behind timing shims: every xcrun, xcodebuild and open
// call runs the stand-in through generation-timing-shim, which logs how long
// the tool itself took, so that what remains of a run's time is ours.
struct TimedTools
{
    QString shims;     // first on PATH: xcrun, xcodebuild, open -> the timing shim
    QString realTools; // the stand-in's own links, where the shim finds the tools
    QString log;       // "NAME SECONDS" per call
};
// Creates the shims under `folder`, a fresh stand-in world, and points
// PATH and the stand-in's variables (pauses at zero) at them.
std::optional<TimedTools> setUpTimedTools(const QString &folder);

struct ToolLog
{
    double seconds = 0;
    int calls = 0;
    QHash<QString, int> callsByTool; // "xcodebuild" -> 2, ...
};
ToolLog readToolLog(const QString &log);

// What one call through the timing shim costs beyond the tool itself (the
// shim's own start), so that it is not counted as the run's overhead.
double shimCostMilliseconds(const TimedTools &tools, const QString &scratch);

} // namespace BenchSupport
