#pragma once
// Small helpers shared by the generation benchmarks.

#include <QElapsedTimer>
#include <QHash>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <functional>
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

// Runs `vantrel --root ROOT ARGUMENTS` for a benchmark's set-up, with
// `input` on its standard input; false when it fails.
bool vantrel(const QString &root, const QStringList &arguments, const QByteArray &input = {});

QString devicesimBinary();
QString vantrelBinary();
QString timingShimBinary();

} // namespace BenchSupport
