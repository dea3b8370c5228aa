// The contact sheet: the page's shape, escaping and marks, the grid gathered
// from an output tree, its thumbnails; and the localization warnings kept
// beside the screenshots with their dismissals.

#include "TestSupport.h"

#include "ModelFixture.h"
#include "app/ContactSheet.h"

#include <QRegularExpression>
#include <QTest>

using namespace ContactSheet;

namespace {

int occurrences(const QString &text, const QString &part) { return int(text.count(part)); }

Cell generated(const QString &image)
{
    return Cell{CellState::generated, image, ".thumbnails/" + image.chopped(4) + ".jpg", {}, false};
}

} // namespace

class ContactSheetTest : public QObject
{
    Q_OBJECT

private slots:
    void pageHasOneGridPerDeviceWithMarks()
    {
        Page page;
        page.projectName = "Trips <Caf\u00e9> & \"Co\"";
        page.runDate = "2026-11-23 12:00";
        DeviceGrid phone{"iPhone 15 Pro", {"01-trips.png", "02-a&b<c>.png"}, {"en-US", "de-DE", "ja-JP"}, {}};
        Cell drifted = generated("_needs-review/de-DE/iPhone 15 Pro/01-trips.png");
        drifted.state = CellState::drifted;
        Cell warned = generated("ja-JP/iPhone 15 Pro/01-trips.png");
        warned.warning = "ja-JP iPhone 15 Pro/01-trips.png looks the same as en-US: is the app localized for ja-JP?";
        Cell dismissed = generated("ja-JP/iPhone 15 Pro/02-a&b<c>.png");
        dismissed.warning = "x";
        dismissed.warningDismissed = true;
        phone.cells = {{generated("en-US/iPhone 15 Pro/01-trips.png"), drifted, warned},
                       {generated("en-US/iPhone 15 Pro/02-a&b<c>.png"), Cell{}, dismissed}};
        DeviceGrid pad{"iPad#1", {"01-trips.png"}, {"en-US"}, {{generated("en-US/iPad#1/01-trips.png")}}};
        page.devices = {phone, pad};

        const QString html = ContactSheet::html(page);
        QVERIFY(html.startsWith("<!DOCTYPE html>"));
        // Escaped names, percent-encoded links.
        QVERIFY(html.contains("<h1>Trips &lt;Caf\u00e9&gt; &amp; &quot;Co&quot;</h1>"));
        QVERIFY(!html.contains("<Caf"));
        QVERIFY(html.contains("<th class=\"checkpoint\">02-a&amp;b&lt;c&gt;.png</th>"));
        QVERIFY(html.contains("<a href=\"en-US/iPhone%2015%20Pro/02-a%26b%3Cc%3E.png\">"));
        QVERIFY(html.contains("src=\".thumbnails/en-US/iPad%231/01-trips.jpg\""));
        // Self-contained: no scripts, nothing from the network.
        QVERIFY(!html.contains("<script"));
        QVERIFY(!html.contains("http"));
        QVERIFY(!html.contains("<link"));
        // Shape: two grids, header rows plus one row per checkpoint, a cell per language.
        QCOMPARE(occurrences(html, "<table class=\"grid\">"), 2);
        QCOMPARE(occurrences(html, "<h2>"), 2);
        QCOMPARE(occurrences(html, "<tr>"), 3 + 2);
        QCOMPARE(occurrences(html, "<td"), 6 + 1);
        QCOMPARE(occurrences(html, "<img "), 6);
        QVERIFY(html.contains("<tr><th></th><th>en-US</th><th>de-DE</th><th>ja-JP</th></tr>"));
        // Marks.
        QCOMPARE(occurrences(html, "<td class=\"drifted\">"), 1);
        QCOMPARE(occurrences(html, "<td class=\"missing\">"), 1);
        QCOMPARE(occurrences(html, "<td class=\"warned\">"), 1);
        QVERIFY(html.contains("title=\"ja-JP iPhone 15 Pro/01-trips.png looks the same as en-US: is the app "
                              "localized for ja-JP?\""));
        QVERIFY(html.contains("same words as first language (dismissed)"));
        QVERIFY(html.contains("Run: 2026-11-23 12:00 &middot; 6 screenshots &middot; 1 drifted &middot; 1 missing "
                              "&middot; 1 localization warnings"));
    }

    void modelGathersTheGridAndWritesThumbnails()
    {
        ModelFixture f;
        AppModel &model = *f.model;
        const QString out = f.root.path() + "/out";
        arrange(model).project.outputDirectory = out;
        arrange(model).project.languages = {"en-US", "de-DE"};
        arrange(model).project.screens
            = {ScreenDraft{"A", "Trips", {}, {}, 0, {}}, ScreenDraft{"B", "Set tings", {}, {}, 0, {}}};
        writeImage(out + "/en-US/iPhone/01-Trips.png", Qt::red);
        writeImage(out + "/en-US/iPhone/02-Set-tings.png", Qt::green);
        writeImage(out + "/_needs-review/de-DE/iPhone/01-Trips.png", Qt::blue);
        writeImage(out + "/manual/01-Trips.png", Qt::black);
        model.recordLocalizationWarnings({{"de-DE", "en-US", "iPhone", "02-Set-tings.png"}});

        const std::optional<QString> path = model.writeContactSheet();
        QVERIFY2(path, qPrintable(model.lastError().value_or(QString())));
        QCOMPARE(*path, out + "/index.html");
        const Page page = model.contactSheetPage();
        QCOMPARE(page.devices.size(), 1);
        const DeviceGrid &grid = page.devices.first();
        QCOMPARE(grid.deviceName, QString("iPhone"));
        QCOMPARE(grid.checkpoints, (QStringList{"01-Trips.png", "02-Set-tings.png"}));
        QCOMPARE(grid.cells.at(0).at(0).image, QString("en-US/iPhone/01-Trips.png"));
        QCOMPARE(grid.cells.at(0).at(1).state, CellState::drifted);
        QCOMPARE(grid.cells.at(1).at(1).state, CellState::missing);
        QVERIFY(grid.cells.at(1).at(1).warning.startsWith("de-DE iPhone/02-Set-tings.png looks the same as en-US"));

        const QImage thumbnail(out + "/.thumbnails/_needs-review/de-DE/iPhone/01-Trips.jpg");
        QCOMPARE(thumbnail.width(), thumbnailWidth);
        QVERIFY(qAbs(thumbnail.pixelColor(5, 5).blue() - 255) < 8);
        // The page and its thumbnails never show up in the gallery.
        model.refreshReviewImages();
        QCOMPARE(model.reviewImages().size(), 4);
    }

    void dismissedWarningStaysDismissedAcrossRuns()
    {
        ModelFixture f;
        AppModel &model = *f.model;
        arrange(model).project.outputDirectory = f.root.path() + "/out";
        QDir().mkpath(model.project().outputDirectory);
        const LocalizationWarning phone{"ja-JP", "en-US", "iPhone", "01-trips.png"};
        const LocalizationWarning pad{"ja-JP", "en-US", "iPad", "01-trips.png"};
        const LocalizationWarning other{"ja-JP", "en-US", "iPhone", "02-explore.png"};
        model.recordLocalizationWarnings({phone, other});
        QVERIFY(model.dismissLocalizationWarning("01-trips.png", "ja-JP"));
        QVERIFY(!model.lastError());
        QCOMPARE(model.activeLocalizationWarnings(), QList<LocalizationWarning>{other});

        // A later run warns again, on two devices: the dismissal covers both.
        const QList<LocalizationWarning> kept = model.recordLocalizationWarnings({phone, pad, other});
        QVERIFY(kept.at(0).dismissed && kept.at(1).dismissed && !kept.at(2).dismissed);
        const QList<LocalizationWarning> read = model.localizationWarnings();
        QCOMPARE(read, kept);
        QCOMPARE(model.activeLocalizationWarnings(), QList<LocalizationWarning>{other});
    }
};

VANTREL_TEST(ContactSheetTest);
#include "ContactSheetTest.moc"
