// (a) Validating one language of twelve full-size screenshots against their
// references, beside ImageMagick making the same 32 x 70 thumbnails.

#include "BenchSupport.h"
#include "DriftBench.h"

#include "ModelFixture.h" // arranges the scenario as the tests do
#include "model/AppModel.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

constexpr int screenshotWidth = 1290;
constexpr int screenshotHeight = 2796;
constexpr int screenCount = 12;

// A screen that looks like an app's: a title, a photo card with a gradient,
// rows of text; `caption` changes the text as a translation would.
QImage appScreen(int screen, const QString &caption)
{
    QImage image(screenshotWidth, screenshotHeight, QImage::Format_RGB32);
    image.fill(QColor(242, 242, 247));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QFont title(QStringLiteral("DejaVu Sans"), 90, QFont::Bold);
    p.setFont(title);
    p.drawText(QRect(90, 300, 1100, 160), caption + QStringLiteral(" %1").arg(screen));
    QLinearGradient photo(0, 520, 0, 1300);
    photo.setColorAt(0, QColor::fromHsv((screen * 29) % 360, 160, 250));
    photo.setColorAt(1, QColor::fromHsv((screen * 29 + 40) % 360, 200, 120));
    p.setBrush(photo);
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRect(90, 520, 1110, 780), 60, 60);
    QFont body(QStringLiteral("DejaVu Sans"), 44);
    p.setFont(body);
    for (int row = 0; row < 9; ++row) {
        const int y = 1400 + row * 150;
        p.setBrush(Qt::white);
        p.drawRect(QRect(90, y, 1110, 140));
        p.setPen(Qt::black);
        p.drawText(QRect(140, y + 30, 1000, 90), QStringLiteral("%1 · row %2 · %3").arg(caption).arg(row).arg(screen));
        p.setPen(Qt::NoPen);
    }
    return image;
}

QString screenFile(int number) { return QStringLiteral("%1-screen-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(number); }

// ImageMagick itself, not a look-alike: the product's users would run this binary.
std::optional<QString> imageMagickConvert()
{
    for (const QString &candidate : {QStringLiteral("/usr/bin/convert"), QStringLiteral("/opt/homebrew/bin/convert")}) {
        QByteArray version;
        if (QFileInfo(candidate).isExecutable()
            && BenchSupport::runTool(candidate, {QStringLiteral("-version")}, QDir::tempPath(), {}, &version)
            && version.contains("ImageMagick"))
            return candidate;
    }
    return std::nullopt;
}

} // namespace

void runDriftBench(QTextStream &out)
{
    QTemporaryDir root;
    AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
    const QString manual = model.manualCaptureDirectory();
    const QString output = model.project().outputDirectory + QStringLiteral("/de-DE/iPhone");
    QDir().mkpath(manual);
    QDir().mkpath(output);
    QStringList files;
    for (int number = 1; number <= screenCount; ++number) {
        ScreenDraft screen;
        screen.name = QStringLiteral("screen-%1").arg(number);
        arrange(model).project.screens.append(screen);
        appScreen(number, QStringLiteral("Trips")).save(manual + QLatin1Char('/') + screenFile(number));
        appScreen(number, QStringLiteral("Reisen")).save(output + QLatin1Char('/') + screenFile(number));
        files << output + QLatin1Char('/') + screenFile(number) << manual + QLatin1Char('/') + screenFile(number);
    }

    // Every repetition starts cold: touching the files makes the thumbnail
    // cache treat them as new versions.
    qsizetype issues = 0;
    int round = 0;
    const auto touch = [&](const QStringList &paths) {
        ++round;
        for (const QString &path : paths) {
            QFile file(path);
            if (file.open(QIODevice::ReadWrite))
                file.setFileTime(QDateTime::currentDateTime().addSecs(round), QFileDevice::FileModificationTime);
        }
    };
    const auto validate = [&] {
        issues = model.validateGeneratedScreens(output, QStringLiteral("de-DE"), QStringLiteral("iPhone")).size();
    };
    const double ours = BenchSupport::medianMilliseconds(5, [&] {
        touch(files);
        validate();
    });
    // A later language of the same run: the references are already known.
    QStringList generatedOnly;
    for (int i = 0; i < files.size(); i += 2)
        generatedOnly.append(files.at(i));
    const double warm = BenchSupport::medianMilliseconds(5, [&] {
        touch(generatedOnly);
        validate();
    });
    out << "(a) Drift validation of one language: " << screenCount << " screenshots " << screenshotWidth << " x "
        << screenshotHeight << " against their references (" << files.size() << " images decoded)\n";
    out << QStringLiteral("    Vantrel validateGeneratedScreens     %1 ms  (%2 ms per screenshot, %3 drift issues)\n")
               .arg(ours, 8, 'f', 1).arg(ours / screenCount, 0, 'f', 1).arg(issues);
    out << QStringLiteral("      (later languages of a run, references known: %1 ms)\n").arg(warm, 0, 'f', 1);

    const std::optional<QString> convert = imageMagickConvert();
    if (!convert) {
        out << "    ImageMagick                          not installed: column skipped\n";
        return;
    }
    // One process for all 24 images: the cheapest way to use ImageMagick here.
    const QStringList arguments = QStringList(files) << QStringLiteral("-resize") << QStringLiteral("32x70!")
                                                    << QStringLiteral("-depth") << QStringLiteral("8")
                                                    << QStringLiteral("+adjoin")
                                                    << QStringLiteral("RGBA:") + root.filePath(QStringLiteral("thumb-%d.rgba"));
    bool ok = true;
    const double magick = BenchSupport::medianMilliseconds(3, [&] {
        ok = BenchSupport::runTool(*convert, arguments, root.path()) && ok;
    });
    out << QStringLiteral("    ImageMagick %1 (thumbnails only) %2 ms%3\n")
               .arg(QFileInfo(*convert).fileName(), -16)
               .arg(magick, 8, 'f', 1)
               .arg(ok ? QString() : QStringLiteral("  (convert reported an error)"));
    out << QStringLiteral("    ratio ImageMagick / Vantrel          %1 x  (above 1: Vantrel is faster)\n")
               .arg(magick / ours, 8, 'f', 2);
}
