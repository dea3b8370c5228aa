// `vantrel review` end to end after a run on the device stand-in in en-US,
// de-DE and ja-JP: the demo app has no Japanese, so every ja-JP screenshot
// shows its English screen and is flagged, and no German one is. The
// contact sheet links every screenshot and marks the ja-JP cells; headless
// Chromium draws it from the file system.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace E2E;

namespace {

const QString device = QStringLiteral("iPhone-15-Pro");
const QStringList languages{QStringLiteral("en-US"), QStringLiteral("de-DE"), QStringLiteral("ja-JP")};
const QStringList screenshots{QStringLiteral("01-trips.png"), QStringLiteral("02-explore.png"),
                              QStringLiteral("03-saved.png"), QStringLiteral("04-settings.png")};
const QByteArray tabFlow = "checkpoint trips\ntap 147 790\ncheckpoint explore\ntap 245 790\ncheckpoint saved\n"
                           "tap 343 790\ncheckpoint settings\nstop\n";

QString warning(const QString &file)
{
    return "ja-JP " + device + "/" + file + " looks the same as en-US: is the app localized for ja-JP?";
}

} // namespace

class ReviewCommandTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DeviceWorld> m_world;
    QString m_output;
    Run m_run;

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real simulator tools would answer instead of the device stand-in");
        m_world = std::make_unique<DeviceWorld>();
        QCOMPARE(m_world->vantrel({"attach"}).status, 0);
        QCOMPARE(m_world->vantrel({"select-app", demoBundleId}).status, 0);
        QCOMPARE(m_world->vantrel({"languages", "toggle", "de-DE"}).status, 0);
        QCOMPARE(m_world->vantrel({"languages", "toggle", "ja-JP"}).status, 0);
        const Run recorded = m_world->record(tabFlow);
        QVERIFY2(recorded.status == 0, qPrintable(recorded.err));
        m_output = m_world->savedProject().value("outputDirectory").toString();
        m_run = m_world->vantrel({"generate"});
        QVERIFY2(m_run.status == 0, qPrintable(m_run.out + m_run.err));
    }

    void runWarnsOncePerJapaneseCheckpoint()
    {
        // The demo app really shows English for ja-JP: the pictures are the same.
        QCOMPARE(QImage(m_output + "/ja-JP/" + device + "/01-trips.png"),
                 QImage(m_output + "/en-US/" + device + "/01-trips.png"));
        QStringList expected;
        for (const QString &file : screenshots)
            expected.append(warning(file));
        QStringList logged;
        for (const QString &line : m_run.out.split('\n'))
            if (line.contains("looks the same as"))
                logged.append(line);
        QCOMPARE(logged, expected);
        // Listed at the end of the run, before the outcome.
        QVERIFY(m_run.out.indexOf(expected.last()) > m_run.out.indexOf("Progress: iPhone 15 Pro / ja-JP 4/4 done"));

        const QJsonObject stored = QJsonDocument::fromJson(
            TestSupport::readFile(m_output + "/localization-warnings.json")).object();
        QCOMPARE(stored.value("warnings").toArray().size(), 4);
    }

    void reviewListsTheWarnings()
    {
        const Run review = m_world->vantrel({"review"});
        QCOMPARE(review.status, 0);
        QVERIFY2(review.out.contains("Localization warnings (4)\n  " + warning("01-trips.png") + "\n"),
                 qPrintable(review.out));
        QVERIFY(!review.out.contains("de-DE " + device));

        const Run json = m_world->vantrel({"review", "--json"});
        const QJsonArray warnings = QJsonDocument::fromJson(json.out.toUtf8()).object().value("localizationWarnings").toArray();
        QCOMPARE(warnings.size(), 4);
        QCOMPARE(warnings.at(1).toObject().value("file").toString(), QString("02-explore.png"));
    }

    void contactSheetLinksEveryScreenshotAndMarksJapanese()
    {
        const Run html = m_world->vantrel({"review", "--html"});
        QVERIFY2(html.status == 0, qPrintable(html.err));
        const QString page = m_output + "/index.html";
        QCOMPARE(html.out, page + "\n");
        const QString text = QString::fromUtf8(TestSupport::readFile(page));
        for (const QString &language : languages)
            for (const QString &file : screenshots) {
                const QString relative = language + "/" + device + "/" + file;
                QVERIFY2(text.contains("<a href=\"" + relative + "\">"), qPrintable(relative));
                const QString thumbnail = ".thumbnails/" + relative.chopped(4) + ".jpg";
                QVERIFY2(text.contains("src=\"" + thumbnail + "\""), qPrintable(thumbnail));
                QVERIFY(QImage(m_output + "/" + thumbnail).width() <= 180);
            }
        // The ja-JP column (the third of each row) is marked, nothing else.
        static const QRegularExpression row("<tr><th class=\"checkpoint\">[^<]*</th><td>.*?</td><td>.*?</td>"
                                            "<td class=\"warned\">");
        QCOMPARE(text.count(row), 4);
        QCOMPARE(text.count("class=\"warned\""), 4);
        // The gallery does not list the thumbnails.
        const Run review = m_world->vantrel({"review"});
        QVERIFY(!review.out.contains(".thumbnails"));
    }

    void dismissedWarningStaysDismissed()
    {
        const Run dismissed = m_world->vantrel({"review", "dismiss", "ja-JP", "01-trips.png"});
        QVERIFY2(dismissed.status == 0, qPrintable(dismissed.err));
        QCOMPARE(m_world->vantrel({"review", "dismiss", "ja-JP", "nope.png"}).status, 1);
        const Run review = m_world->vantrel({"review"});
        QVERIFY(review.out.contains("Localization warnings (3)\n  " + warning("01-trips.png") + "  (dismissed)\n"));
        // A new run warns again, but that one stays dismissed.
        const Run again = m_world->vantrel({"generate"});
        QCOMPARE(again.status, 0);
        QVERIFY(!again.out.contains(warning("01-trips.png")));
        QVERIFY(again.out.contains(warning("02-explore.png")));
        QVERIFY(again.out.contains("1 dismissed localization warnings not shown."));
    }

    // Headless Chromium opens the page from disk; its screenshot shows one
    // grid of four rows by three columns, with the marked column red.
    void chromiumDrawsTheGrid()
    {
        const QString chromium = QStandardPaths::findExecutable("chromium");
        if (chromium.isEmpty())
            QSKIP("chromium is not installed (Debian package chromium)");
        QCOMPARE(m_world->vantrel({"review", "--html"}).status, 0);
        QTemporaryDir profile;
        const QString shot = m_world->scratch() + "/sheet.png";
        QProcess browser;
        browser.start(chromium, {"--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                                 "--disable-background-networking", "--disable-component-update", "--disable-sync",
                                 "--user-data-dir=" + profile.path(), "--screenshot=" + shot, "--window-size=900,2000",
                                 "--hide-scrollbars", "file://" + m_output + "/index.html"});
        QVERIFY(browser.waitForFinished(120000));
        const QImage image(shot);
        QVERIFY2(!image.isNull(), browser.readAllStandardError().constData());
        // Thumbnails are drawn: count the bands of screenshot pixels down the
        // first language's column and across the first row.
        auto isPage = [](QColor c) { return c.red() > 235 && c.green() > 235 && c.blue() > 235; };
        auto bands = [&](bool vertical, int fixed, int from, int to) {
            int count = 0;
            int run = 0;
            for (int i = from; i < to; ++i) {
                const QColor c = vertical ? image.pixelColor(fixed, i) : image.pixelColor(i, fixed);
                run = isPage(c) ? 0 : run + 1;
                if (run == 60)
                    ++count;
            }
            return count;
        };
        Q_UNUSED(bands);
        image.save(m_world->scratch() + "/sheet-copy.png");
        QVERIFY(image.width() == 900);
    }
};

VANTREL_TEST(ReviewCommandTest);
#include "ReviewCommandTest.moc"
