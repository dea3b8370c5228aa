// The project library and the snapshot archive: what is listed and in which
// order, and that opening, deleting and restoring never lose or overwrite
// a project or a folder that is not ours.

#include "ModelFixture.h"
#include "TestSupport.h"

#include "model/ProjectCoding.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>
#include <QUuid>

namespace {

ScreenshotProject document(const QString &id, const QString &name, ReferenceSeconds updatedAt,
                           const QString &outputDirectory = QString())
{
    ScreenshotProject p;
    p.projectID = id;
    p.projectName = name;
    p.updatedAt = updatedAt;
    p.outputDirectory = outputDirectory.isEmpty() ? QStringLiteral("/nowhere/") + id : outputDirectory;
    return p;
}

struct Fixture : ModelFixture
{
    QString writeProject(const ScreenshotProject &p, const QString &fileName = QString())
    {
        const QString name = fileName.isEmpty() ? *p.projectID + QStringLiteral(".json") : fileName;
        return TestSupport::writeFile(model->projectsDirectory() + QLatin1Char('/') + name, ProjectCoding::encodeBytes(p));
    }

    QStringList libraryIDs() const
    {
        QStringList ids;
        for (const ProjectLibraryItem &item : model->projectLibrary())
            ids.append(item.id);
        return ids;
    }

    std::optional<ProjectLibraryItem> item(const QString &id) const
    {
        for (const ProjectLibraryItem &entry : model->projectLibrary())
            if (entry.id == id)
                return entry;
        return std::nullopt;
    }
};

} // namespace

class ProjectLibraryTest : public QObject
{
    Q_OBJECT

private slots:
    // A file that cannot be read is listed as such (by its file date), so it
    // can be seen and deleted; it is never opened.
    void libraryListsProjectFilesNewestFirst()
    {
        Fixture f;
        ScreenshotProject rich = document("B", "Rich", 200);
        rich.languages = {"en-US", "de-DE", "fr-FR"};
        rich.screens = {ScreenDraft{QUuid::createUuid().toString(QUuid::WithoutBraces), "Home", "", "", 0, {}}};
        f.writeProject(rich);
        f.writeProject(document("A", "Plain", 100));
        f.writeProject(document("C", "Upper", 300), "C.JSON");
        TestSupport::writeFile(f.model->projectsDirectory() + "/broken.json", "{ not json");
        TestSupport::writeFile(f.model->projectsDirectory() + "/notes.txt", ProjectCoding::encodeBytes(document("T", "Txt", 400)));

        f.model->refreshProjectLibrary();
        QCOMPARE(f.libraryIDs(), (QStringList{"broken", "C", "B", "A"}));
        QCOMPARE(f.item("B")->subtitle, QString("3 languages \u00B7 1 checkpoint"));
        QCOMPARE(f.item("A")->subtitle, QString("1 language \u00B7 0 checkpoints"));
        QCOMPARE(f.item("B")->title, QString("Rich"));
        QVERIFY(!f.model->lastError());

        const ProjectLibraryItem broken = *f.item("broken");
        QCOMPARE(broken.isReadable, false);
        QCOMPARE(broken.subtitle, QString("Cannot be read"));
        f.model->openProject(broken);
        QVERIFY(f.model->lastError().value_or(QString()).startsWith("Could not open project: "));
        f.model->deleteProject(broken);
        QCOMPARE(f.libraryIDs(), (QStringList{"C", "B", "A"}));
    }

    // Equal dates keep the listing order: file names by code point, so an
    // emoji name follows a full-width one, as in every other list.
    void equalDatesKeepTheListingOrder()
    {
        Fixture f;
        f.writeProject(document("EMOJI", "Emoji", 100), QString::fromUtf8("\xF0\x9F\x98\x80.json"));
        f.writeProject(document("WIDE", "Wide", 100), QString::fromUtf8("\xEF\xBC\xA1.json")); // U+FF21
        f.writeProject(document("LOWER", "Lower", 100), "a.json");
        f.writeProject(document("UPPER", "Upper", 100), "Z.json");
        f.writeProject(document("NEWER", "Newer", 150), "b.json");
        f.model->refreshProjectLibrary();
        QCOMPARE(f.libraryIDs(), (QStringList{"NEWER", "UPPER", "LOWER", "WIDE", "EMOJI"}));
    }

    void snapshotsListDamagedFilesAsArchivedProject()
    {
        Fixture f;
        const QString folder = f.model->snapshotsDirectory();
        ScreenshotProject named = document("N", "Named", 0);
        named.screens = {ScreenDraft{QUuid::createUuid().toString(QUuid::WithoutBraces), "a", "", "", 0, {}},
                         ScreenDraft{QUuid::createUuid().toString(QUuid::WithoutBraces), "b", "", "", 0, {}}};
        TestSupport::writeFile(folder + "/a.json", ProjectCoding::encodeBytes(named));
        ScreenshotProject byApp = document("P", "", 0);
        byApp.appName = "Shop";
        TestSupport::writeFile(folder + "/b.JSON", ProjectCoding::encodeBytes(byApp));
        TestSupport::writeFile(folder + "/c.json", "garbage");
        f.model->refreshProjectSnapshots();

        QCOMPARE(f.model->projectSnapshots().size(), 3);
        QMap<QString, ProjectSnapshotSummary> byFile;
        for (const ProjectSnapshotSummary &s : f.model->projectSnapshots())
            byFile.insert(QFileInfo(s.url).fileName(), s);
        QCOMPARE(byFile["a.json"].title, QString("Named"));
        QCOMPARE(byFile["a.json"].subtitle, QString("1 languages, 2 checkpoints"));
        QCOMPARE(byFile["b.JSON"].title, QString("Shop"));
        QCOMPARE(byFile["c.json"].title, QString("Archived Project"));
        QCOMPARE(byFile["c.json"].subtitle, QString("0 languages, 0 checkpoints"));
    }

    // Only a folder strictly inside packageRoot/output belongs to the project.
    void deleteRemovesOnlyManagedOutputFolders_data()
    {
        QTest::addColumn<QString>("relativeOutput"); // below the data root
        QTest::addColumn<bool>("removed");
        QTest::newRow("inside output root") << QString("output/shop-abcdef12") << true;
        QTest::newRow("nested inside output root") << QString("output/clients/shop") << true;
        QTest::newRow("the output root itself") << QString("output") << false;
        QTest::newRow("look-alike prefix") << QString("output-old") << false;
        QTest::newRow("inside look-alike") << QString("output-old/shop") << false;
        QTest::newRow("user's own folder") << QString("Desktop/shots") << false;
        QTest::newRow("climbs out with ..") << QString("output/../Desktop/shots") << false;
    }

    void deleteRemovesOnlyManagedOutputFolders()
    {
        QFETCH(QString, relativeOutput);
        QFETCH(bool, removed);
        Fixture f;
        const QString folder = f.root.path() + "/" + relativeOutput;
        TestSupport::writeFile(QDir::cleanPath(folder) + "/en-US/01.png", "png");
        const QString file = f.writeProject(document("V", "Victim", 100, folder));
        f.model->loadSavedProject(); // current is V
        f.writeProject(document("W", "Other", 50));
        f.model->refreshProjectLibrary();

        f.model->deleteProject(*f.item("V"));
        QVERIFY(!f.model->lastError());
        QVERIFY(!QFileInfo::exists(file));
        QVERIFY(f.platform->trashed.contains(file));
        QCOMPARE(!QFileInfo::exists(QDir::cleanPath(folder) + "/en-US/01.png"), removed);
    }

    void outputLinkLeadingOutsideIsKept()
    {
        Fixture f;
        const QString outside = TestSupport::writeFile(f.root.path() + "/elsewhere/keep.png", "png");
        QDir().mkpath(f.model->outputRootDirectory());
        const QString link = f.model->outputRootDirectory() + "/linked";
        QVERIFY(QFile::link(f.root.path() + "/elsewhere", link));
        f.platform->trashAvailable = false;
        f.model->deleteManagedOutputDirectoryIfSafe(document("L", "Linked", 0, link));
        QVERIFY(QFileInfo::exists(outside));
    }

    void replacingANeverSavedProjectArchivesIt()
    {
        Fixture f; // the start-up project was never saved to the library
        arrange(*f.model).project.projectName = "Draft";
        f.model->deleteCurrentProjectAndCreateReplacement();
        QCOMPARE(f.model->runLog(), QString("Started a new local project.\n"));
        QCOMPARE(f.model->project().projectName, std::optional<QString>("Untitled Project"));
        const QStringList archived = QDir(f.model->snapshotsDirectory()).entryList(QDir::Files);
        QCOMPARE(archived.size(), 1);
        QVERIFY(archived.first().startsWith("before-new-project-"));
        QVERIFY(archived.first().endsWith("-draft.json"));
    }

    void aFailedSnapshotKeepsTheProjectItWouldReplace()
    {
        Fixture f;
        f.model->loadSavedProject();
        const QString id = *f.model->project().projectID;
        TestSupport::writeFile(f.model->snapshotsDirectory(), "a file where the folder should be");
        f.model->startNewProject("Next");
        QVERIFY(f.model->lastError()->startsWith("Could not archive project snapshot: "));
        QCOMPARE(f.model->project().projectID, std::optional<QString>(id));
    }

    void restoreOfADamagedSnapshotChangesNothing()
    {
        Fixture f;
        f.model->loadSavedProject();
        const ScreenshotProject before = f.model->project();
        ProjectSnapshotSummary snapshot;
        snapshot.url = TestSupport::writeFile(f.model->snapshotsDirectory() + "/bad.json", "[]");
        f.model->restoreProjectSnapshot(snapshot);
        QVERIFY(f.model->lastError()->startsWith("Could not restore project snapshot: "));
        QCOMPARE(f.model->project(), before);
    }

    // Where a deleted project's files went, truthfully: a deletion without
    // a Trash does not claim to have used one.
    void deletingAProjectSaysWhereItsFilesWent_data()
    {
        QTest::addColumn<bool>("trash");
        QTest::addColumn<QString>("line");
        QTest::newRow("Trash") << true << "Moved %1 to the Trash.\n";
        QTest::newRow("no Trash") << false << "Deleted %1 for good: no Trash is available here.\n";
    }

    void deletingAProjectSaysWhereItsFilesWent()
    {
        QFETCH(bool, trash);
        QFETCH(QString, line);
        Fixture f;
        f.writeProject(document("K", "Kept", 100));
        const QString file = f.writeProject(document("W", "Other", 50));
        f.model->loadSavedProject(); // the newest, K, is current
        f.platform->trashAvailable = trash;
        arrange(*f.model).runLog.clear();
        f.model->deleteProject(*f.item("W"));
        QVERIFY(!QFileInfo::exists(file));
        QCOMPARE(f.model->runLog(), line.arg(file));
    }
};

VANTREL_TEST(ProjectLibraryTest);
#include "ProjectLibraryTest.moc"
