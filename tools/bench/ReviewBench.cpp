// (d) The localization check's cost: the same recorded run in en-US, de-DE
// and ja-JP on the device stand-in at its default pauses, once with real
// text recognition (Tesseract) and once with a recogniser that reads
// nothing at once, so that the difference is what the check adds to the
// run's wall time.
// (e) The contact sheet of 500 screenshots (50 checkpoints x 10 languages)
// written from scratch: thumbnails of every picture and the page.

#include "BenchSupport.h"
#include "ReviewBench.h"

#include "ModelFixture.h" // arranges the scenario as the tests do
#include "model/AppModel.h"
#include "model/Await.h"
#include "platform/TesseractTextRecognizer.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>
#include <ctime>

namespace {

class RecognizingPlatform : public ScriptedPlatformServices
{
public:
    QList<RecognizedTextLine> recognizeText(const QImage &image) override
    {
        return TesseractTextRecognizer::recognize(image);
    }
};

struct Timed
{
    double seconds = 0;
    bool succeeded = false;
    qsizetype warnings = 0;
};

Timed timeRun(const QString &root, std::unique_ptr<PlatformServices> platform)
{
    AppModel model(root, std::move(platform));
    model.loadSavedProject();
    model.refreshDevices();
    QElapsedTimer timer;
    timer.start();
    model.startRecordedAttachedCapture();
    awaitFuture(model.runTask());
    return {double(timer.nsecsElapsed()) / 1e9,
            model.lastRunOutcome() && model.lastRunOutcome()->kind == RunOutcomeKind::success,
            model.activeLocalizationWarnings().size()};
}

// The one-minute load average, as the system reports it ("?" where it does not).
QString loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("?");
    return QString::fromLatin1(file.readAll().split(' ').value(0));
}

} // namespace

bool runLocalizationCheckBench(QTextStream &out)
{
    out << "\n(d) Localization check: added wall time of a run, stand-in at its default pauses\n";
    out.flush();
    QTemporaryDir dir;
    const QString tools = dir.filePath(QStringLiteral("tools"));
    const QString root = dir.filePath(QStringLiteral("root"));
    qputenv("DEVICESIM_HOME", dir.filePath(QStringLiteral("devicesim")).toLocal8Bit());
    qunsetenv("DEVICESIM_TIME_SCALE");
    qputenv("PATH", tools.toLocal8Bit() + ':' + qgetenv("PATH"));
    const QByteArray flow = "checkpoint trips\ntap 147 790\ncheckpoint explore\ntap 245 790\ncheckpoint saved\n"
                            "tap 344 790\ncheckpoint settings\nstop\n";
    const bool ready = BenchSupport::runTool(BenchSupport::devicesimBinary(), {QStringLiteral("init")}, dir.path())
                       && BenchSupport::runTool(BenchSupport::devicesimBinary(), {QStringLiteral("shims"), tools}, dir.path())
                       && BenchSupport::vantrel(root, {QStringLiteral("attach")})
                       && BenchSupport::vantrel(root, {QStringLiteral("select-app"), QStringLiteral("com.vantrel.demo.Trips")})
                       && BenchSupport::vantrel(root, {QStringLiteral("languages"), QStringLiteral("toggle"), QStringLiteral("de-DE")})
                       && BenchSupport::vantrel(root, {QStringLiteral("languages"), QStringLiteral("toggle"), QStringLiteral("ja-JP")})
                       && BenchSupport::vantrel(root, {QStringLiteral("record")}, flow);
    if (!ready) {
        out << "    could not set up the recorded project\n";
        return false;
    }
    // Alternating, so that a busy moment of the machine hits both alike; the
    // load average says how busy the machine was.
    constexpr int pairs = 3;
    std::vector<double> without, with, added;
    qsizetype warnings = 0;
    out << QStringLiteral("    run of 12 screenshots (4 checkpoints x en-US, de-DE, ja-JP), %1 pairs of runs\n").arg(pairs);
    for (int i = 0; i < pairs; ++i) {
        const Timed plain = timeRun(root, std::make_unique<ScriptedPlatformServices>());
        const Timed checked = timeRun(root, std::make_unique<RecognizingPlatform>());
        if (!plain.succeeded || !checked.succeeded) {
            out << "    a run did not complete\n";
            return false;
        }
        without.push_back(plain.seconds);
        with.push_back(checked.seconds);
        added.push_back((checked.seconds - plain.seconds) / plain.seconds * 100.0);
        warnings = checked.warnings;
        out << QStringLiteral("    without %1 s, with the check %2 s: %3 %  (load average %4)\n")
                   .arg(plain.seconds, 0, 'f', 2)
                   .arg(checked.seconds, 0, 'f', 2)
                   .arg(added.back(), 0, 'f', 1)
                   .arg(loadAverage());
        out.flush();
    }
    std::sort(without.begin(), without.end());
    std::sort(with.begin(), with.end());
    std::sort(added.begin(), added.end());
    const double medianAdded = (with[pairs / 2] - without[pairs / 2]) / without[pairs / 2] * 100.0;
    out << QStringLiteral("    without recognition, median          %1 s\n").arg(without[pairs / 2], 7, 'f', 2);
    out << QStringLiteral("    with the check (%1 warnings), median  %2 s\n").arg(warnings).arg(with[pairs / 2], 7, 'f', 2);
    out << QStringLiteral("    added, medians                       %1 %  (pairs %2 … %3 %; target: under 10 %)\n")
               .arg(medianAdded, 7, 'f', 1)
               .arg(added.front(), 0, 'f', 1)
               .arg(added.back(), 0, 'f', 1);
    return true;
}

bool runContactSheetBench(QTextStream &out)
{
    out << "\n(e) Contact sheet of 500 screenshots, thumbnails made from scratch\n";
    out.flush();
    QTemporaryDir dir;
    AppModel model(dir.filePath(QStringLiteral("root")), std::make_unique<ScriptedPlatformServices>());
    arrange(model).project.outputDirectory = dir.filePath(QStringLiteral("output"));
    // The stand-in's iPhone screenshot size, drawn like one of its screens
    // (flat panels, pictures, text), so that PNG decoding costs what a real
    // screenshot costs.
    QImage picture(1179, 2556, QImage::Format_RGB32);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        QFont font = painter.font();
        font.setPixelSize(48);
        painter.setFont(font);
        for (int i = 0; i < 6; ++i) {
            const QRect panel(60, 300 + i * 360, 1059, 300);
            QLinearGradient gradient(panel.topLeft(), panel.bottomRight());
            gradient.setColorAt(0, QColor::fromHsv(i * 50, 160, 240));
            gradient.setColorAt(1, QColor::fromHsv(i * 50 + 30, 200, 180));
            painter.fillRect(panel, gradient);
            painter.setPen(Qt::black);
            painter.drawText(panel.adjusted(20, 20, 0, 0), QStringLiteral("Checkpoint text %1 \u00b7 Lisbon").arg(i));
        }
    }
    constexpr int checkpoints = 50;
    constexpr int languageCount = 10;
    for (int l = 0; l < languageCount; ++l)
        arrange(model).project.languages.append(QStringLiteral("xx-%1").arg(l));
    const QString device = QStringLiteral("iPhone-15-Pro");
    const QString original = dir.filePath(QStringLiteral("picture.png"));
    picture.save(original);
    for (int c = 1; c <= checkpoints; ++c) {
        arrange(model).project.screens.append(
            ScreenDraft{QString::number(c), QStringLiteral("screen%1").arg(c), {}, {}, 0, {}});
        for (const QString &language : model.project().languages) {
            const QString folder
                = model.project().outputDirectory + QLatin1Char('/') + language + QLatin1Char('/') + device;
            QDir().mkpath(folder);
            QFile::copy(original, folder + QStringLiteral("/%1-screen%2.png").arg(c, 2, 10, QLatin1Char('0')).arg(c));
        }
    }
    QElapsedTimer timer;
    timer.start();
    const std::clock_t cpuStart = std::clock();
    const std::optional<QString> page = model.writeContactSheet();
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    const double cpuSeconds = double(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    if (!page) {
        out << "    the page was not written: " << model.lastError().value_or(QString()) << "\n";
        return false;
    }
    out << QStringLiteral("    %1 screenshots of 1179 x 2556 on %2 cores   %3 s  (target: under 15 s)\n")
               .arg(checkpoints * languageCount)
               .arg(QThread::idealThreadCount())
               .arg(seconds, 0, 'f', 2);
    // On a shared machine the wall time says more about the neighbours:
    // the processor time spread over two cores is what an idle one takes.
    out << QStringLiteral("    processor time %1 s, over 2 cores          %2 s\n").arg(cpuSeconds, 0, 'f', 2).arg(cpuSeconds / 2, 0, 'f', 2);
    timer.restart();
    model.writeContactSheet();
    out << QStringLiteral("    again, thumbnails up to date               %1 s\n").arg(double(timer.nsecsElapsed()) / 1e9, 0, 'f', 2);
    return true;
}
