// The project library, snapshots, review listing, diagnostics and guide
// through the real `vantrel` binary, on a private data root. No device is
// needed: PATH holds nothing, so no simulator tool can be reached.

#include "TestSupport.h"

#include "replay/ChildProcess.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Result
{
    int status = -1;
    QString out;
    QString err;
};

class Cli
{
public:
    QTemporaryDir dir;
    QString root() const { return dir.path() + "/root"; }
    QString home() const { return dir.path() + "/home"; }

    Result run(const QStringList &arguments) const
    {
        QDir().mkpath(dir.path() + "/empty-bin");
        QDir().mkpath(home() + "/.local/share"); // the Trash is made inside it
        const QHash<QString, QString> environment{
            {"PATH", dir.path() + "/empty-bin"},
            {"HOME", home()},
            {"XDG_DATA_HOME", home() + "/.local/share"},
            {"LANG", "C.UTF-8"},
        };
        ChildProcess child(TestSupport::vantrelBinary(), QStringList{"--root", root()} + arguments, dir.path(),
                           environment);
        if (!child.waitForExit(60000))
            qFatal("vantrel did not finish");
        return {child.output().exitStatus, QString::fromUtf8(child.output().standardOutput),
                QString::fromUtf8(child.output().standardError)};
    }

    Result ok(const QStringList &arguments) const
    {
        const Result result = run(arguments);
        if (result.status != 0)
            qWarning("vantrel %s: %s", qPrintable(arguments.join(' ')), qPrintable(result.err));
        return result;
    }

    QJsonValue json(const QStringList &arguments) const
    {
        const Result result = ok(arguments + QStringList{"--json"});
        const QJsonDocument document = QJsonDocument::fromJson(result.out.toUtf8());
        return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    }

    QString currentID() const { return json({"status"})["projectID"].toString(); }
    QString workspace() const { return root() + "/.quillmark"; }
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
    void projectsAreListedNewestFirstAndRenamesNeedAName()
    {
        Cli cli;
        QCOMPARE(cli.ok({"projects", "rename", "First"}).out, QString("Renamed project to First.\n"));
        const Result created = cli.ok({"projects", "new", "Second", "Shot"});
        QVERIFY(created.out.startsWith("Started a new local project.\nCurrent project: Second Shot ("));
        TestSupport::writeFile(cli.workspace() + "/projects/broken.json", "{ damaged");

        // A file that cannot be read is listed as such, so that it can be deleted.
        const QJsonArray projects = cli.json({"projects"}).toArray();
        QCOMPARE(values(projects, "title"), (QStringList{"broken.json", "Second Shot", "First"}));
        QCOMPARE(values(projects, "subtitle"), (QStringList{"Cannot be read", "1 language \u00B7 0 checkpoints",
                                                            "1 language \u00B7 0 checkpoints"}));
        QVERIFY(!projects[0]["readable"].toBool() && projects[1]["readable"].toBool());
        QVERIFY(projects[1]["current"].toBool() && !projects[2]["current"].toBool());
        const Result listing = cli.ok({"projects"});
        QVERIFY(listing.out.contains("\n* Second Shot  (1 language \u00B7 0 checkpoints)  "));
        cli.ok({"projects", "delete", "broken"});
        QCOMPARE(values(cli.json({"projects"}).toArray(), "title"), (QStringList{"Second Shot", "First"}));

        // The project that was replaced is also archived.
        const QJsonArray snapshots = cli.json({"snapshots"}).toArray();
        QCOMPARE(values(snapshots, "title"), QStringList{"First"});
        QVERIFY(QFileInfo(snapshots[0]["file"].toString()).fileName().startsWith("before-new-project-"));

        const Result refused = cli.run({"projects", "rename", "   "});
        QCOMPARE(refused.status, 1);
        QCOMPARE(refused.err, QString("Project name cannot be empty.\n"));
        QCOMPARE(cli.json({"status"})["displayName"].toString(), QString("Second Shot"));
    }

    void restoringASnapshotTwiceGivesTwoNewProjects()
    {
        Cli cli;
        cli.ok({"projects", "rename", "Origin"});
        const QString originID = cli.currentID();
        const QString originFile = cli.workspace() + "/projects/" + originID + ".json";
        const Result created = cli.ok({"snapshots", "create"});
        const QString snapshot = created.out.split('\n').value(1);
        QVERIFY2(QFileInfo::exists(snapshot), qPrintable(created.out));
        QVERIFY(created.out.startsWith("Archived project snapshot: " + QFileInfo(snapshot).fileName() + "\n"));
        TestSupport::writeFile(cli.workspace() + "/project-snapshots/zz-damaged.json", "nonsense");

        QStringList restoredIDs;
        for (int i = 0; i < 2; ++i) {
            const Result restored = cli.ok({"snapshots", "restore", QFileInfo(snapshot).fileName()});
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
        QCOMPARE(cli.run({"snapshots", "restore", "zz-damaged.json"}).status, 1);
    }

    void deletingTheCurrentProjectOpensTheNextThenStartsBlank()
    {
#ifdef Q_OS_MACOS
        QSKIP("the Finder's Trash is the user's own, whatever HOME says; no test may touch it");
#endif
        Cli cli;
        cli.ok({"projects", "rename", "Keep"});
        const QString keepID = cli.currentID();
        cli.ok({"projects", "new", "Doomed"});
        const QString doomedID = cli.currentID();
        const QString doomedOutput = cli.json({"status"})["outputDirectory"].toString();
        QVERIFY(doomedOutput.startsWith(cli.root() + "/output/doomed-"));
        TestSupport::writeFile(doomedOutput + "/en-US/01.png", "png");

        const Result deleted = cli.ok({"projects", "delete", doomedID});
        QCOMPARE(deleted.out, "Moved " + cli.root() + "/.quillmark/projects/" + doomedID + ".json to the Trash.\nMoved "
                                  + doomedOutput + " to the Trash.\nDeleted project and opened Keep\n"
                                  + "Current project: Keep (" + keepID + ")\n");
        QVERIFY(!QFileInfo::exists(doomedOutput));
        // Into this session's Trash, not gone for good.
        const QString trash = cli.home() + "/.local/share/Trash/files";
        QVERIFY(QFileInfo::exists(trash + "/" + doomedID + ".json"));
        QVERIFY(QFileInfo::exists(trash + "/" + QFileInfo(doomedOutput).fileName() + "/en-US/01.png"));

        const Result last = cli.ok({"projects", "delete", keepID.left(8)});
        QVERIFY(last.out.contains(" to the Trash.\nDeleted project and started a new local project.\n"));
        QCOMPARE(cli.json({"status"})["displayName"].toString(), QString("Untitled Project"));
        QCOMPARE(cli.json({"projects"}).toArray().size(), 1);
        QCOMPARE(cli.run({"projects", "open", "NO-SUCH-ID"}).status, 1);
    }

    void diagnosticsReviewAndGuide()
    {
        Cli cli;
        const QString output = cli.json({"status"})["outputDirectory"].toString();
        for (const char *file : {"en-US/iPhone/01-home.png", "de-DE/iPhone/01-home.png", "de-DE/iPhone/02-cart.PNG",
                                 "manual/01-home.png", "_needs-review/de-DE/iPhone/02-cart.png", "de-DE/notes.txt"})
            TestSupport::writeFile(output + "/" + file, "png");

        const QJsonObject review = cli.json({"review"}).toObject();
        const QJsonArray languages = review["languages"].toArray();
        QCOMPARE(values(languages, "language"), (QStringList{"de-DE", "en-US"}));
        QCOMPARE(values(languages[0]["images"].toArray(), "relativePath"),
                 (QStringList{"de-DE/iPhone/01-home.png", "de-DE/iPhone/02-cart.PNG"}));
        QCOMPARE(values(review["needsReview"].toArray(), "relativePath"),
                 QStringList{"_needs-review/de-DE/iPhone/02-cart.png"});
        const QString text = cli.ok({"review"}).out;
        QVERIFY(text.contains("de-DE (2)\n  de-DE/iPhone/01-home.png\n"));
        QVERIFY(text.contains("Needs review (1)\n  _needs-review/de-DE/iPhone/02-cart.png\n"));
        QVERIFY(!text.contains("manual/"));

        const Result diagnostics = cli.ok({"diagnostics"});
        const QString path = diagnostics.out.trimmed();
        QCOMPARE(path, cli.workspace() + "/diagnostics.txt");
        const QStringList lines = QString::fromUtf8(TestSupport::readFile(path)).split('\n');
        QCOMPARE(lines.value(0), QString("Vantrel Diagnostics"));
        QVERIFY(lines.value(1).startsWith("Generated at: "));
        QCOMPARE(lines.mid(2, 5),
                 (QStringList{"Simulator: none", "App:  ", "Languages: en-US", "Checkpoints: 0", ""}));

        const Result guide = cli.ok({"guide"});
        const QString guidePath = guide.out.trimmed();
        QVERIFY(guidePath.endsWith("/CUSTOMER_READY.md"));
        QCOMPARE(TestSupport::readFile(guidePath),
                 TestSupport::readFile(QStringLiteral(VANTREL_TEST_DATA_DIR "/../resources/CUSTOMER_READY.md")));
    }
};

VANTREL_TEST(LibraryCommandsTest);
#include "LibraryCommandsTest.moc"
