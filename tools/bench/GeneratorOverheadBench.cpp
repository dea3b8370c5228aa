// (c) The command-line generator's own cost per screenshot: the wall time of
// `vantrel run CONFIG` (its start included) with the device stand-in's
// pauses at zero, minus the time the device tools themselves took, measured
// by the timing shims as in (b). Also counts the xcodebuild invocations,
// which must be one per device and language, not one per screen.

#include "BenchSupport.h"
#include "GeneratorOverheadBench.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

using BenchSupport::vantrel;

constexpr int screenCount = 4;
constexpr int languageCount = 3;

struct Measurement
{
    double totalMs = 0;
    BenchSupport::ToolLog tools;
    bool succeeded = false;
};

// A project on a copy of the demo app's bundle with a screen per tab, each
// reached by its launch state, in three languages; returns its configuration.
std::optional<QString> setUpProject(const QString &root, const QString &scratch)
{
    QByteArray container;
    if (!BenchSupport::runTool(BenchSupport::devicesimBinary(),
                               {QStringLiteral("xcrun"), QStringLiteral("simctl"), QStringLiteral("get_app_container"),
                                QStringLiteral("booted"), QStringLiteral("com.vantrel.demo.Trips")},
                               scratch, {}, &container))
        return std::nullopt;
    const QString build = scratch + QStringLiteral("/Trips.app");
    if (QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-R"), QString::fromUtf8(container.trimmed()), build}) != 0)
        return std::nullopt;
    bool ready = vantrel(root, {QStringLiteral("attach")}) && vantrel(root, {QStringLiteral("set-app"), build});
    for (const char *code : {"de", "en", "es", "fr", "pt-BR", "en-US", "de-DE", "fr-FR"})
        ready = ready && vantrel(root, {QStringLiteral("languages"), QStringLiteral("toggle"), QLatin1String(code)});
    for (const char *tab : {"trips", "explore", "saved", "settings"})
        ready = ready
                && vantrel(root, {QStringLiteral("screens"), QStringLiteral("add"), QLatin1String(tab),
                                  QStringLiteral("--state"), QLatin1String(tab)});
    // No extra wait after each launch: the time measured is the generator's.
    ready = ready && vantrel(root, {QStringLiteral("project"), QStringLiteral("set"), QStringLiteral("launch-wait"),
                                    QStringLiteral("0")});
    ready = ready && vantrel(root, {QStringLiteral("config")});
    if (!ready)
        return std::nullopt;
    return root + QStringLiteral("/.quillmark/generated-config.yaml");
}

Measurement measureOneRun(const QString &root, const QString &config, const QString &log, const QString &scratch)
{
    QFile::remove(log);
    Measurement m;
    QElapsedTimer timer;
    timer.start();
    m.succeeded = BenchSupport::runTool(BenchSupport::vantrelBinary(),
                                        {QStringLiteral("--root"), root, QStringLiteral("run"), QStringLiteral("--plain"), config},
                                        scratch);
    m.totalMs = double(timer.nsecsElapsed()) / 1e6;
    m.tools = BenchSupport::readToolLog(log);
    return m;
}

} // namespace

bool generatorOverheadBench(QTextStream &out)
{
    QTemporaryDir dir;
    const QString root = dir.filePath(QStringLiteral("root"));
    const std::optional<BenchSupport::TimedTools> tools = BenchSupport::setUpTimedTools(dir.path());
    out << "\n(c) The command-line generator's own overhead per screenshot, device stand-in pauses at zero\n";
    const std::optional<QString> config = tools ? setUpProject(root, dir.path()) : std::nullopt;
    if (!config) {
        out << "    could not set up the project on a copied build\n";
        return false;
    }

    const double shimCost = BenchSupport::shimCostMilliseconds(*tools, dir.path());
    std::vector<Measurement> runs;
    for (int i = 0; i < 3; ++i)
        runs.push_back(measureOneRun(root, *config, tools->log, dir.path()));
    const auto ours = [shimCost](const Measurement &m) {
        return m.totalMs - m.tools.seconds * 1000 - shimCost * m.tools.calls;
    };
    std::sort(runs.begin(), runs.end(), [&](const Measurement &a, const Measurement &b) { return ours(a) < ours(b); });
    const Measurement &m = runs[1];
    if (!m.succeeded) {
        out << "    the run did not complete\n";
        return false;
    }
    const int screenshots = screenCount * languageCount;
    const int builds = m.tools.callsByTool.value(QStringLiteral("xcodebuild"));
    out << QStringLiteral("    run of %1 screenshots (%2 screens x %3 languages, 1 device), median of 3 runs\n")
               .arg(screenshots).arg(screenCount).arg(languageCount);
    out << QStringLiteral("    whole run (vantrel run)              %1 ms\n").arg(m.totalMs, 8, 'f', 1);
    out << QStringLiteral("    device tools (%1 calls)               %2 ms\n").arg(m.tools.calls).arg(m.tools.seconds * 1000, 8, 'f', 1);
    out << QStringLiteral("    timing shim, %1 ms a call            %2 ms  (taken off)\n")
               .arg(shimCost, 0, 'f', 1).arg(shimCost * m.tools.calls, 8, 'f', 1);
    out << QStringLiteral("    overhead per screenshot              %1 ms  (target: under 50 ms)\n")
               .arg(ours(m) / screenshots, 8, 'f', 1);
    out << QStringLiteral("    xcodebuild invocations               %1     (target: %2, one per device and language)\n")
               .arg(builds, 4).arg(languageCount);
    return builds == languageCount;
}
