// The workspace: where the current project comes from at start, how it is
// saved, and how names become folders.

#include "ModelFixture.h"
#include "TestSupport.h"

#include "model/ProjectCoding.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <QUuid>
#include <unistd.h>

namespace {

std::unique_ptr<AppModel> makeModel(const QString &root)
{
    return std::make_unique<AppModel>(root, std::make_unique<ScriptedPlatformServices>());
}

QByteArray documentBytes(const QString &id, const QString &name)
{
    ScreenshotProject p;
    p.projectID = id;
    p.projectName = name;
    p.outputDirectory = "/elsewhere/" + name;
    return ProjectCoding::encodeBytes(p);
}

} // namespace

Q_DECLARE_METATYPE(std::optional<QString>)

class WorkspaceTest : public QObject
{
    Q_OBJECT

private slots:
    void loadOrder_data()
    {
        QTest::addColumn<QString>("identityFile"); // content, or "-" for no file
        QTest::addColumn<bool>("withCurrentFile");
        QTest::addColumn<bool>("withLegacy");
        QTest::addColumn<QString>("expectedName");
        QTest::newRow("identity with blanks") << "  ABC\n" << true << true << "Current";
        QTest::newRow("identity names a missing file") << "GONE" << false << true << "Legacy";
        QTest::newRow("blank identity") << "  \n" << true << true << "Legacy";
        QTest::newRow("no identity, no legacy: library") << "-" << true << false << "Current";
        QTest::newRow("missing file, no legacy: library") << "GONE" << true << false << "Current";
    }

    void loadOrder()
    {
        QFETCH(QString, identityFile);
        QFETCH(bool, withCurrentFile);
        QFETCH(bool, withLegacy);
        QFETCH(QString, expectedName);
        QTemporaryDir root;
        const QString workspace = root.path() + "/.quillmark";
        if (identityFile != "-")
            TestSupport::writeFile(workspace + "/current-project-id.txt", identityFile.toUtf8());
        if (withCurrentFile)
            TestSupport::writeFile(workspace + "/projects/ABC.json", documentBytes("ABC", "Current"));
        if (withLegacy)
            TestSupport::writeFile(workspace + "/project.json", documentBytes("LEGACY", "Legacy"));

        auto model = makeModel(root.path());
        model->loadSavedProject();
        QVERIFY(!model->lastError());
        QCOMPARE(*model->project().projectName, expectedName);
        // The loaded project becomes current and is saved under its identity.
        QCOMPARE(TestSupport::readFile(workspace + "/current-project-id.txt"), model->project().projectID->toUtf8());
        QVERIFY(QFile::exists(model->projectFileURL(*model->project().projectID)));
    }

    // What the reader finds wrong is ProjectDocumentTest::decoding's; here,
    // that a document that fails to load is reported and left alone.
    void corruptProjectIsReportedAndLeftAlone()
    {
        const QByteArray content = "{\"appName\": \"Tri";
        QTemporaryDir root;
        const QString workspace = root.path() + "/.quillmark";
        TestSupport::writeFile(workspace + "/current-project-id.txt", "ABC");
        TestSupport::writeFile(workspace + "/projects/ABC.json", content);
        TestSupport::writeFile(workspace + "/project.json", documentBytes("LEGACY", "Legacy"));

        auto model = makeModel(root.path());
        const QString startupID = *model->project().projectID;
        model->loadSavedProject();
        QVERIFY(model->lastError());
        QVERIFY2(model->lastError()->startsWith("Could not load saved project: "), qPrintable(*model->lastError()));
        QVERIFY2(model->lastError()->contains("not valid JSON"), qPrintable(*model->lastError()));
        // No later source is tried, nothing is saved, the file is untouched.
        QCOMPARE(*model->project().projectID, startupID);
        QCOMPARE(TestSupport::readFile(workspace + "/projects/ABC.json"), content);
        QCOMPARE(TestSupport::readFile(workspace + "/current-project-id.txt"), QByteArray("ABC"));
        QVERIFY(!QFile::exists(model->projectFileURL(startupID)));
    }

    void failedSaveIsReportedAndKeepsWhatWasThere()
    {
        QTemporaryDir root;
        auto model = makeModel(root.path());
        model->loadSavedProject();
        const QString file = model->projectFileURL(*model->project().projectID);

        // A folder where the mirror file belongs makes the save fail even for root.
        const QString mirror = root.path() + "/.quillmark/project.json";
        QFile::remove(mirror);
        QDir().mkpath(mirror + "/blocked");
        arrange(*model).project.appName = "Changed";
        QVERIFY(!model->saveProject());
        QVERIFY2(model->lastError()->startsWith("Could not save project: "), qPrintable(*model->lastError()));
        QVERIFY(QFileInfo(mirror).isDir());
        QVERIFY(!QFileInfo::exists(mirror + ".tmp"));

        if (geteuid() != 0) {
            // A read-only projects folder: the previous file stays whole.
            QDir(mirror).removeRecursively();
            QFile::setPermissions(root.path() + "/.quillmark/projects", QFile::ReadOwner | QFile::ExeOwner);
            arrange(*model).project.appName = "Changed again";
            QVERIFY(!model->saveProject());
            QFile::setPermissions(root.path() + "/.quillmark/projects",
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            QVERIFY(model->lastError()->startsWith("Could not save project: "));
            QVERIFY(TestSupport::readFile(file).contains("Changed\""));
        }
    }

    // The file system's own reason reaches the user, not only the folder's name.
    void folderThatCannotBeMadeSaysWhy()
    {
        QTemporaryDir root;
        auto model = makeModel(root.path());
        TestSupport::writeFile(root.path() + "/.quillmark/projects", "a file in the way");
        QVERIFY(!model->saveProject());
        const QString expected = "Could not save project: Could not create the folder " + root.path()
                                 + "/.quillmark/projects: ";
        QVERIFY2(model->lastError()->startsWith(expected), qPrintable(*model->lastError()));
        QVERIFY(model->lastError()->size() > expected.size());
    }

    void normalization()
    {
        QTemporaryDir root;
        auto model = makeModel(root.path());

        ScreenshotProject legacy;
        legacy.schemaVersion.reset();
        legacy.projectID.reset();
        legacy.globalLaunchArguments = {"-x"};
        legacy.stateArgumentName = "old.state";
        legacy.sampleNameArgumentName = "sample";
        legacy.screens = {ScreenDraft{"S", "n", "", "", 0, {}}};
        legacy.manualCaptureIndex = -3;
        model->normalizeLoadedProject(legacy);
        QCOMPARE(legacy.schemaVersion, std::optional<qint64>(2));
        QVERIFY(legacy.globalLaunchArguments.isEmpty() && legacy.screens.isEmpty());
        QCOMPARE(legacy.stateArgumentName, QString("vantrel.screen"));
        QCOMPARE(legacy.sampleNameArgumentName, QString());
        QVERIFY(legacy.projectID);
        QCOMPARE(legacy.manualCaptureIndex, std::optional<qint64>(1));
        QVERIFY(legacy.outputDirectory.endsWith("/output/untitled-project-" + legacy.projectID->left(8).toLower()));

        ScreenshotProject future;
        future.schemaVersion = 7;
        future.screens = {ScreenDraft{"S", "n", "", "", 0, {}}};
        future.manualCaptureIndex.reset();
        future.outputDirectory = "/keep";
        model->normalizeLoadedProject(future);
        QCOMPARE(future.schemaVersion, std::optional<qint64>(7));
        QCOMPARE(future.screens.size(), 1);
        QVERIFY(!future.manualCaptureIndex);
        QCOMPARE(future.outputDirectory, QString("/keep"));
    }

    void outputDirectoryChoice_data()
    {
        QTest::addColumn<QString>("current"); // "ROOT/" is replaced by the output root
        QTest::addColumn<bool>("prefer");
        QTest::addColumn<bool>("kept");
        QTest::newRow("user folder kept") << "/Users/me/Shots" << false << true;
        QTest::newRow("user folder, prefer specific") << "/Users/me/Shots" << true << false;
        QTest::newRow("inside output root re-derived") << "ROOT/old-name-12345678" << false << false;
        QTest::newRow("output root itself") << "ROOT" << false << false;
        QTest::newRow("untitled folder replaced") << "/Users/me/untitled-project-1" << false << false;
        QTest::newRow("empty") << "" << false << false;
        QTest::newRow("deeper inside output root kept") << "ROOT/a/b" << false << true;
    }

    void outputDirectoryChoice()
    {
        QFETCH(QString, current);
        QFETCH(bool, prefer);
        QFETCH(bool, kept);
        QTemporaryDir root;
        auto model = makeModel(root.path());
        current.replace("ROOT", model->outputRootDirectory());
        arrange(*model).project.outputDirectory = current;
        arrange(*model).project.projectID = "ABCDEF12-0000-0000-0000-000000000000";
        model->ensureProjectIdentityAndOutputDirectory("My App!", prefer);
        QCOMPARE(model->project().outputDirectory,
                 kept ? current : model->outputRootDirectory() + "/my-app-abcdef12");
    }
};

VANTREL_TEST(WorkspaceTest);
#include "WorkspaceTest.moc"
