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
#include <QUrl>

using namespace E2E;

namespace {

const QStringList reviewLanguages{QStringLiteral("en-US"), QStringLiteral("de-DE"), QStringLiteral("ja-JP")};

QString warning(const QString &file)
{
    return "ja-JP " + iPhoneFolder + "/" + file + " looks the same as en-US: is the app localized for ja-JP?";
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
        const QString failed = m_world->recordTabFlow({"de-DE", "ja-JP"});
        QVERIFY2(failed.isEmpty(), qPrintable(failed));
        m_output = m_world->savedProject().value("outputDirectory").toString();
        m_run = m_world->vantrel({"generate"});
        QVERIFY2(m_run.status == 0, qPrintable(m_run.out + m_run.err));
    }

    void runWarnsOncePerJapaneseCheckpoint()
    {
        QStringList expected;
        for (const QString &file : tabScreenshots)
            expected.append(warning(file));
        QStringList logged;
        for (const QString &line : m_run.out.split('\n'))
            if (line.contains("looks the same as"))
                logged.append(line);
        QCOMPARE(logged, expected);
        // Listed at the end of the run, before the outcome.
        QVERIFY(m_run.out.indexOf(expected.last()) > m_run.out.indexOf("Progress: iPhone 15 Pro / ja-JP 4/4 done"));
    }

    void reviewListsTheWarnings()
    {
        const Run review = m_world->vantrel({"review"});
        QCOMPARE(review.status, 0);
        QVERIFY2(review.out.contains("Localization warnings (4)\n  " + warning("01-trips.png") + "\n"),
                 qPrintable(review.out));
        QVERIFY(!review.out.contains("de-DE " + iPhoneFolder));

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
        // Links, thumbnails and marks are the page's own (ContactSheetTest);
        // here, that the real run's ja-JP column, the third, is the one marked.
        const QString text = QString::fromUtf8(TestSupport::readFile(page));
        const QString relative = "ja-JP/" + iPhoneFolder + "/04-settings.png";
        QVERIFY2(text.contains("<a href=\"" + relative + "\">"), qPrintable(text));
        QVERIFY(QImage(m_output + "/.thumbnails/" + relative.chopped(4) + ".jpg").width() <= 180);
        static const QRegularExpression row("<tr><th class=\"checkpoint\">[^<]*</th><td>.*?</td><td>.*?</td>"
                                            "<td class=\"warned\">");
        QCOMPARE(text.count(row), 4);
        QCOMPARE(text.count("class=\"warned\""), 4);
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

    // Headless Chromium opens the page from disk; in its screenshot the
    // table's grey rules make a grid of four checkpoint rows by three
    // languages (plus the header row and the checkpoint column), and only
    // the ja-JP column carries the red warning marks.
    void chromiumDrawsTheGrid()
    {
        const QString chromium = QStandardPaths::findExecutable("chromium");
        if (chromium.isEmpty())
            QSKIP("chromium is not installed (Debian package chromium)");
        QCOMPARE(m_world->vantrel({"review", "--html"}).status, 0);
        QTemporaryDir profile;
        const QString shot = m_world->scratch() + "/sheet.png";
        QProcess browser;
        browser.setProcessEnvironment(m_world->environment({{"HOME", profile.path()}}));
        browser.start(chromium, {"--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                                 "--disable-background-networking", "--disable-component-update", "--disable-sync",
                                 "--user-data-dir=" + profile.path() + "/profile", "--screenshot=" + shot,
                                 "--window-size=1000,2400", "--hide-scrollbars",
                                 QUrl::fromLocalFile(m_output + "/index.html").toString()});
        // Under load the first start of a fresh profile can take minutes.
        QVERIFY(browser.waitForFinished(300000));
        const QImage image = QImage(shot).convertToFormat(QImage::Format_RGB32);
        QVERIFY2(!image.isNull(), browser.readAllStandardError().constData());

        auto isRule = [](QRgb p) { return qAbs(qRed(p) - 204) < 8 && qAbs(qGreen(p) - 204) < 8 && qAbs(qBlue(p) - 204) < 8; };
        auto isWarningRed = [](QRgb p) { return qRed(p) > 170 && qGreen(p) < 70 && qBlue(p) < 70; };
        // Positions of long straight grey lines, neighbours merged.
        auto rules = [&](bool vertical, int minimumLength) {
            QList<int> found;
            const int lines = vertical ? image.width() : image.height();
            const int length = vertical ? image.height() : image.width();
            for (int i = 0; i < lines; ++i) {
                int run = 0, longest = 0;
                for (int j = 0; j < length; ++j) {
                    run = isRule(vertical ? image.pixel(i, j) : image.pixel(j, i)) ? run + 1 : 0;
                    longest = std::max(longest, run);
                }
                if (longest >= minimumLength && (found.isEmpty() || found.last() < i - 2))
                    found.append(i);
            }
            return found;
        };
        const QList<int> columns = rules(true, 400);
        const QList<int> rows = rules(false, 400);
        image.save(m_world->scratch() + "/sheet-seen.png");
        QCOMPARE(columns.size(), 1 + 1 + reviewLanguages.size());
        QCOMPARE(rows.size(), 1 + 1 + tabScreenshots.size());
        // Red per language column.
        QList<int> red;
        for (int c = 1; c + 1 < columns.size(); ++c) {
            int count = 0;
            for (int x = columns[c]; x < columns[c + 1]; ++x)
                for (int y = rows.first(); y < rows.last(); ++y)
                    count += isWarningRed(image.pixel(x, y));
            red.append(count);
        }
        // The pictures have a little red of their own (hearts, pins); the
        // marks' dashed outlines are far more.
        const QString counts = QStringLiteral("%1 %2 %3").arg(red.at(0)).arg(red.at(1)).arg(red.at(2));
        QVERIFY2(red.at(2) > 1000 && red.at(2) > 4 * std::max(red.at(0), red.at(1)), qPrintable(counts));
    }
};

VANTREL_TEST(ReviewCommandTest);
#include "ReviewCommandTest.moc"
