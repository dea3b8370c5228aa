// Naming a checkpoint from its screen text: which lines may name a screen,
// which one wins, and the Tesseract recogniser that reads them on Linux.

#include "TestSupport.h"

#include "platform/TesseractTextRecognizer.h"
#include "platform/scripted/ScriptedPlatformServices.h"
#include "recorder/AutoScreenshotNamer.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

Q_DECLARE_METATYPE(std::optional<QString>)

namespace {

using Candidate = AutoScreenshotNamer::Candidate;

Candidate at(const QString &text, double x, double y, double width, double height)
{
    return {text, QRectF(x, y, width, height)};
}

// A light screen with a large dark title near the top and a line of body text.
QImage screenWithTitle(const QString &title, const QString &body)
{
    QImage image(393 * 2, 852 * 2, QImage::Format_RGB32);
    image.fill(QColor(242, 242, 247));
    QPainter painter(&image);
    painter.setPen(Qt::black);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setBold(true);
    font.setPixelSize(68);
    painter.setFont(font);
    painter.drawText(QPoint(40, 260), title);
    font.setBold(false);
    font.setPixelSize(34);
    painter.setFont(font);
    painter.drawText(QPoint(40, 900), body);
    return image;
}

} // namespace

class AutoScreenshotNamerTest : public QObject
{
    Q_OBJECT

private slots:
    void usableLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("usable");
        QTest::newRow("title") << "Settings" << true;
        QTest::newRow("two letters") << "Go" << true;
        QTest::newRow("one letter") << "A" << false;
        QTest::newRow("44 characters") << QString(44, QLatin1Char('a')) << true;
        QTest::newRow("45 characters") << QString(45, QLatin1Char('a')) << false;
        QTest::newRow("44 accented characters") << QString(44, QChar(0x00E9)) << true;
        QTest::newRow("clock") << "9:41" << false;
        QTest::newRow("clock, two-digit hour") << "12:05" << false;
        QTest::newRow("battery") << "100%" << false;
        QTest::newRow("numbers and separators") << "1,234.50 %" << false;
        QTest::newRow("no letter") << "#1 -- !!" << false;
        QTest::newRow("blocked, any case") << "Share PNG" << false;
        QTest::newRow("blocked after normalising") << "  wi-FI \n" << false;
        QTest::newRow("save to photos across lines") << "Save\nto   photos" << false;
        QTest::newRow("a time inside words") << "Opens 9:41" << true;
    }

    void usableLines()
    {
        QFETCH(QString, text);
        QFETCH(bool, usable);
        QCOMPARE(at(text, 0.1, 0.5, 0.3, 0.03).isUsable(), usable);
    }

    void statusBarCostsMoreThanSize()
    {
        const Candidate inStatusBar = at("Title", 0.3, 0.91, 0.4, 0.04);
        QCOMPARE(inStatusBar.score(), 0.95 + 0.32 - 1.2);
        QVERIFY(at("Title", 0.3, 0.86, 0.4, 0.04).score() > inStatusBar.score());
        // Height counts up to a quarter of the image.
        QCOMPARE(at("Big", 0.3, 0.0, 0.4, 0.5).score(), at("Big", 0.3, 0.0, 0.4, 0.25).score() + 0.25);
    }

    void suggestedName_data()
    {
        QTest::addColumn<QList<Candidate>>("lines");
        QTest::addColumn<std::optional<QString>>("name");
        QTest::newRow("status bar only") << QList<Candidate>{at("9:41", 0.05, 0.96, 0.1, 0.02),
                                                           at("100%", 0.8, 0.96, 0.1, 0.02)}
                                         << std::optional<QString>();
        QTest::newRow("title beats body") << QList<Candidate>{at("Notifications are on", 0.05, 0.6, 0.6, 0.02),
                                                             at("Settings", 0.05, 0.82, 0.4, 0.05)}
                                          << std::optional<QString>("settings");
        QTest::newRow("button never wins") << QList<Candidate>{at("Share PNG", 0.3, 0.85, 0.4, 0.1),
                                                              at("Photo", 0.3, 0.4, 0.4, 0.03)}
                                           << std::optional<QString>("photo");
        QTest::newRow("equal scores keep reading order")
            << QList<Candidate>{at("First", 0.3, 0.5, 0.4, 0.03), at("Second", 0.3, 0.5, 0.4, 0.03)}
            << std::optional<QString>("first");
        QTest::newRow("blanks and slashes made safe")
            << QList<Candidate>{at("Trips /  Lisbon\nDay 1", 0.3, 0.8, 0.4, 0.05)}
            << std::optional<QString>("trips-lisbon-day-1");
    }

    void suggestedName()
    {
        QFETCH(QList<Candidate>, lines);
        QFETCH(std::optional<QString>, name);
        QCOMPARE(AutoScreenshotNamer::suggestName(lines), name);
    }

    void unreadableImageGivesNoName()
    {
        QTemporaryDir dir;
        const QString path = TestSupport::writeFile(dir.path() + "/broken.png", "not a png at all");
        ScriptedPlatformServices platform;
        platform.recognizedLines = {{"Settings", QRectF(0.1, 0.8, 0.4, 0.05)}};
        QCOMPARE(AutoScreenshotNamer::suggestName(path, platform), std::optional<QString>());
        QCOMPARE(AutoScreenshotNamer::suggestName(dir.path() + "/missing.png", platform), std::optional<QString>());
    }

    void tesseractReadsTitleWithItsBox()
    {
        const QImage image = screenWithTitle(QStringLiteral("Settings"), QStringLiteral("Offline maps are on"));
        const QList<RecognizedTextLine> lines = TesseractTextRecognizer::recognize(image);
        const auto title = std::find_if(lines.begin(), lines.end(),
                                        [](const RecognizedTextLine &l) { return l.text == QLatin1String("Settings"); });
        QVERIFY2(title != lines.end(), qPrintable(lines.isEmpty() ? QString("nothing read") : lines.first().text));
        // Drawn with its baseline at 260 of 1704 pixels: its box lies near the
        // top, in bottom-left coordinates.
        const double top = title->boundingBox.y() + title->boundingBox.height();
        QVERIFY2(top > 0.85 && top < 0.9, qPrintable(QString::number(top)));
        QVERIFY(title->boundingBox.x() < 0.1);

        QList<Candidate> candidates;
        for (const RecognizedTextLine &l : lines)
            candidates.append({l.text, l.boundingBox});
        QCOMPARE(AutoScreenshotNamer::suggestName(candidates), std::optional<QString>("settings"));
    }
};

VANTREL_TEST(AutoScreenshotNamerTest);
#include "AutoScreenshotNamerTest.moc"
