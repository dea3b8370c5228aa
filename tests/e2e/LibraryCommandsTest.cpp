// The commands that need no device through the real `vantrel` binary, on a
// private data root: where the data lives, a project that cannot be loaded
// or saved, the project library, snapshots, review listing, diagnostics and
// guide. PATH holds no simulator tool.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace E2E;

namespace {

// A world of its own, with no simulator tool in reach: none of these
// commands needs a device.
class Library : public DeviceWorld
{
public:
    Run ok(const QStringList &arguments) const
    {
        const Run result = offline(arguments);
        if (result.status != 0)
            qWarning("vantrel %s: %s", qPrintable(arguments.join(' ')), qPrintable(result.err));
        return result;
    }

    QJsonValue json(const QStringList &arguments) const
    {
        const QJsonDocument document = QJsonDocument::fromJson(ok(arguments + QStringList{"--json"}).out.toUtf8());
        return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    }

    QString currentID() const { return json({"status"})["projectID"].toString(); }
    QString workspace() const { return root() + "/.quillmark"; }
    QString home() const { return scratch() + "/home"; }
};

QStringList values(const QJsonArray &array, const QString &key)
{
    QStringList result;
    for (const QJsonValue &value : array)
        result.append(value[key].toString());
    return result;
}

} // namespace

class LibraryCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    // A project that fails to load is never saved over, and the library
    // commands still reach the others. --root wins over VANTREL_HOME.
    void corruptProjectStaysOnDiskAndAnotherCanBeOpened()
    {
        Library cli;
        const QString id = cli.currentID();
        TestSupport::writeFile(cli.workspace() + "/current-project-id.txt", "ABC");
        const QByteArray corrupt = R"({"schemaVersion": 2, "appName": 5})";
        TestSupport::writeFile(cli.workspace() + "/projects/ABC.json", corrupt);
        const Run status = cli.offline({"status"});
        QCOMPARE(status.status, 1);
        QVERIFY2(status.err.startsWith("Could not load saved project: "), qPrintable(status.err));
        QCOMPARE(cli.offline({"projects", "rename", "X"}).status, 1);
        QCOMPARE(cli.offline({"snapshots", "create"}).status, 1);

        const Run list = cli.offline({"projects"});
        QCOMPARE(list.status, 0);
        QVERIFY2(list.err.startsWith("Could not load saved project: "), qPrintable(list.err));
        QVERIFY(list.out.contains(id));
        QCOMPARE(cli.offline({"projects", "open", id}).status, 0);
        QCOMPARE(cli.offline({"status"}).status, 0);
        QCOMPARE(TestSupport::readFile(cli.workspace() + "/projects/ABC.json"), corrupt);

        const QString other = cli.scratch() + "/other";
        QCOMPARE(cli.offline({"--root", other, "status"}).status, 0);
        QVERIFY(QFileInfo::exists(other + "/.quillmark/project.json"));
    }

    // A project that loads but cannot be written back (a folder stands where
    // the mirror file belongs) is reported as a failed save; commands that
    // only read it still run, and one that changes it says its save failed.
    void startUpSaveFailureStillReadsTheProject()
    {
        Library cli;
        QCOMPARE(cli.offline({"languages", "toggle", "de-DE"}).status, 0);
        const QString mirror = cli.workspace() + "/project.json";
        QVERIFY(QFile::remove(mirror));
        QVERIFY(QDir().mkpath(mirror + "/inside"));

        const Run languages = cli.offline({"languages"});
        QVERIFY2(languages.err.startsWith("Could not save project: "), qPrintable(languages.err));
        QVERIFY(!languages.err.contains("load"));
        QCOMPARE(languages.out, QString("en-US     English (United States)\nde-DE     German (Germany)\n"));
        QCOMPARE(languages.status, 0);

        const Run toggle = cli.offline({"languages", "toggle", "fr-FR"});
        QCOMPARE(toggle.status, 1);
        QVERIFY2(toggle.err.endsWith("\n") && toggle.err.count("Could not save project: ") == 2, qPrintable(toggle.err));
        QVERIFY(!toggle.err.contains("Cannot "));
    }

    void projectsAreListedNewestFirstAndRenamesNeedAName()
    {
        Library cli;
        QCOMPARE(cli.ok({"projects", "rename", "First"}).out, QString("Renamed project to First.\n"));
        const Run created = cli.ok({"projects", "new", "Second", "Shot"});
        QVERIFY(created.out.startsWith("Started a new local project.\nCurrent project: Second Shot ("));
        TestSupport::writeFile(cli.workspace() + "/projects/broken.json", "{ damaged");

        // A file that cannot be read is listed as such, so that it can be deleted.
        const QJsonArray projects = cli.json({"projects"}).toArray();
        QCOMPARE(values(projects, "title"), (QStringList{"broken.json", "Second Shot", "First"}));
        QVERIFY(!projects[0]["readable"].toBool() && projects[1]["current"].toBool());
        const Run listing = cli.ok({"projects"});
        QVERIFY(listing.out.contains("\n* Second Shot  (1 language \u00B7 0 checkpoints)  "));
        cli.ok({"projects", "delete", "broken"});
        QCOMPARE(values(cli.json({"projects"}).toArray(), "title"), (QStringList{"Second Shot", "First"}));

        // The project that was replaced is also archived.
        const QJsonArray snapshots = cli.json({"snapshots"}).toArray();
        QCOMPARE(values(snapshots, "title"), QStringList{"First"});
        QVERIFY(QFileInfo(snapshots[0]["file"].toString()).fileName().startsWith("before-new-project-"));

        const Run refused = cli.offline({"projects", "rename", "   "});
        QCOMPARE(refused.status, 1);
        QCOMPARE(refused.err, QString("Project name cannot be empty.\n"));
        QCOMPARE(cli.json({"status"})["displayName"].toString(), QString("Second Shot"));
    }

    void restoringASnapshotTwiceGivesTwoNewProjects()
    {
        Library cli;
        cli.ok({"projects", "rename", "Origin"});
        const QString originID = cli.currentID();
        const QString originFile = cli.workspace() + "/projects/" + originID + ".json";
        const Run created = cli.ok({"snapshots", "create"});
        const QString snapshot = created.out.split('\n').value(1);
        QVERIFY2(QFileInfo::exists(snapshot), qPrintable(created.out));
        QVERIFY(created.out.startsWith("Archived project snapshot: " + QFileInfo(snapshot).fileName() + "\n"));
        TestSupport::writeFile(cli.workspace() + "/project-snapshots/zz-damaged.json", "nonsense");

        QStringList restoredIDs;
        for (int i = 0; i < 2; ++i) {
            const Run restored = cli.ok({"snapshots", "restore", QFileInfo(snapshot).fileName()});
            QVERIFY(restored.out.startsWith("Restored archived project: " + QFileInfo(snapshot).fileName() + "\n"));
            restoredIDs.append(cli.currentID());
        }
        QVERIFY(restoredIDs[0] != restoredIDs[1]);
        QVERIFY(!restoredIDs.contains(originID));
        // Every run saves the current project again; what matters is that the
        // original file still holds the original project.
        QVERIFY(TestSupport::readFile(originFile).contains("\"projectID\":\"" + originID.toUtf8() + "\""));
        const QJsonArray projects = cli.json({"projects"}).toArray();
        QCOMPARE(values(projects, "title"), (QStringList{"Origin", "Origin", "Origin"}));
        const QStringList ids = values(projects, "id");
        QCOMPARE(QSet<QString>(ids.begin(), ids.end()).size(), 3);

        const QJsonArray snapshots = cli.json({"snapshots"}).toArray();
        QVERIFY(values(snapshots, "title").contains("Archived Project"));
        QCOMPARE(cli.offline({"snapshots", "restore", "zz-damaged.json"}).status, 1);
    }

    void deletingTheCurrentProjectOpensTheNextThenStartsBlank()
    {
#ifdef Q_OS_MACOS
        QSKIP("the Finder's Trash is the user's own, whatever HOME says; no test may touch it");
#endif
        Library cli;
        cli.ok({"projects", "rename", "Keep"});
        const QString keepID = cli.currentID();
        cli.ok({"projects", "new", "Doomed"});
        const QString doomedID = cli.currentID();
        const QString doomedOutput = cli.json({"status"})["outputDirectory"].toString();
        QVERIFY(doomedOutput.startsWith(cli.root() + "/output/doomed-"));
        TestSupport::writeFile(doomedOutput + "/en-US/01.png", "png");

        const Run deleted = cli.ok({"projects", "delete", doomedID});
        QCOMPARE(deleted.out, "Moved " + cli.root() + "/.quillmark/projects/" + doomedID + ".json to the Trash.\nMoved "
                                  + doomedOutput + " to the Trash.\nDeleted project and opened Keep\n"
                                  + "Current project: Keep (" + keepID + ")\n");
        QVERIFY(!QFileInfo::exists(doomedOutput));
        // Into this session's Trash, not gone for good.
        const QString trash = cli.home() + "/.local/share/Trash/files";
        QVERIFY(QFileInfo::exists(trash + "/" + doomedID + ".json"));
        QVERIFY(QFileInfo::exists(trash + "/" + QFileInfo(doomedOutput).fileName() + "/en-US/01.png"));

        const Run last = cli.ok({"projects", "delete", keepID.left(8)});
        QVERIFY(last.out.contains(" to the Trash.\nDeleted project and started a new local project.\n"));
        QCOMPARE(cli.json({"status"})["displayName"].toString(), QString("Untitled Project"));
        QCOMPARE(cli.json({"projects"}).toArray().size(), 1);
        QCOMPARE(cli.offline({"projects", "open", "NO-SUCH-ID"}).status, 1);
    }

    void diagnosticsReviewAndGuide()
    {
        Library cli;
        const QString output = cli.json({"status"})["outputDirectory"].toString();
        for (const char *file : {"en-US/iPhone/01-home.png", "de-DE/iPhone/01-home.png", "de-DE/iPhone/02-cart.PNG",
                                 "manual/01-home.png", "_needs-review/de-DE/iPhone/02-cart.png", "de-DE/notes.txt"})
            TestSupport::writeFile(output + "/" + file, "png");

        // Grouping and order are the gallery's own (ReviewGalleryTest); here, the listings.
        const QJsonArray languages = cli.json({"review"})["languages"].toArray();
        QCOMPARE(values(languages, "language"), (QStringList{"de-DE", "en-US"}));
        QCOMPARE(values(languages[0]["images"].toArray(), "relativePath"),
                 (QStringList{"de-DE/iPhone/01-home.png", "de-DE/iPhone/02-cart.PNG"}));
        const QString text = cli.ok({"review"}).out;
        QVERIFY(text.contains("de-DE (2)\n  de-DE/iPhone/01-home.png\n"));
        QVERIFY(text.contains("Needs review (1)\n  _needs-review/de-DE/iPhone/02-cart.png\n"));
        QVERIFY(!text.contains("manual/"));

        const Run diagnostics = cli.ok({"diagnostics"});
        const QString path = diagnostics.out.trimmed();
        QCOMPARE(path, cli.workspace() + "/diagnostics.txt");
        QVERIFY(TestSupport::readFile(path).startsWith("Vantrel Diagnostics\nGenerated at: "));

        const Run guide = cli.ok({"guide"});
        const QString guidePath = guide.out.trimmed();
        QVERIFY(guidePath.endsWith("/CUSTOMER_READY.md"));
        QCOMPARE(TestSupport::readFile(guidePath),
                 TestSupport::readFile(QStringLiteral(VANTREL_TEST_DATA_DIR "/../resources/CUSTOMER_READY.md")));
    }
};

VANTREL_TEST(LibraryCommandsTest);
#include "LibraryCommandsTest.moc"
