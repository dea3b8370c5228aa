// Several processes on one data root (here: several models, each as its own
// process would be): no change undoes another's, reading never writes, a
// renumbering cut short is finished or undone at the next start, and what a
// killed process left behind is cleared away.

#include "ModelFixture.h"
#include "TestSupport.h"

#include "model/ProjectCoding.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSysInfo>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QUuid>

namespace {

std::unique_ptr<AppModel> startedModel(const QString &root)
{
    auto model = std::make_unique<AppModel>(root, std::make_unique<ScriptedPlatformServices>());
    model->loadSavedProject();
    return model;
}

} // namespace

class SharedWorkspaceTest : public QObject
{
    Q_OBJECT

private slots:
    void changesOfTwoProcessesAddUp()
    {
        QTemporaryDir root;
        const auto first = startedModel(root.path());
        const auto second = startedModel(root.path());
        first->addCustomLanguage("de-DE");
        second->addCustomLanguage("fr-FR"); // builds on the file the first one saved
        first->renameCurrentProject("Shared");
        second->toggleLanguage("en-US");
        QCOMPARE(second->project().languages, (QStringList{"de-DE", "fr-FR"}));
        QCOMPARE(second->project().projectName, QStringLiteral("Shared"));

        const auto third = startedModel(root.path());
        QCOMPARE(third->project().languages, (QStringList{"de-DE", "fr-FR"}));
        QCOMPARE(third->project().projectName, QStringLiteral("Shared"));
    }

    void loadingASavedProjectWritesNothing()
    {
        QTemporaryDir root;
        startedModel(root.path())->addCustomLanguage("de-DE");
        const QString workspace = root.path() + "/.quillmark";
        QStringList files;
        for (const QString name : {"project.json", "current-project-id.txt"})
            files.append(workspace + "/" + name);
        for (const QFileInfo &file : QDir(workspace + "/projects").entryInfoList(QDir::Files))
            files.append(file.filePath());
        QList<QDateTime> before;
        for (const QString &file : files)
            before.append(QFileInfo(file).lastModified());
        QTest::qWait(20); // a rewrite would show in the modification time
        const auto reader = startedModel(root.path());
        QVERIFY(!reader->lastError());
        QCOMPARE(reader->project().languages, (QStringList{"en-US", "de-DE"}));
        for (qsizetype i = 0; i < files.size(); ++i)
            QCOMPARE(QFileInfo(files.at(i)).lastModified(), before.at(i));
    }

    void lockOfAProcessThatDiedIsTakenOver()
    {
        QTemporaryDir root;
        const auto model = startedModel(root.path());
        // QLockFile's own format: process id, application, host.
        TestSupport::writeFile(model->workspaceLockFile(),
                               "2147483600\nvantrel\n" + QSysInfo::machineHostName().toUtf8() + "\n");
        QElapsedTimer timer;
        timer.start();
        model->addCustomLanguage("it-IT");
        QVERIFY(!model->lastError());
        QVERIFY(timer.elapsed() < 5000);
        QVERIFY(model->project().languages.contains("it-IT"));
        QVERIFY(!QFileInfo::exists(model->workspaceLockFile())); // released after the change
    }

    // The images of a renumbering that a killed process left half-way: the
    // next start puts them back when the project was not saved with the new
    // order, and finishes the move when it was.
    void interruptedRenumberingIsPutRight_data()
    {
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("phase");
        QTest::newRow("parking, not saved") << false << "parking";
        QTest::newRow("placing, not saved") << false << "placing";
        QTest::newRow("placing, saved") << true << "placing";
    }

    void interruptedRenumberingIsPutRight()
    {
        QFETCH(bool, saved);
        QFETCH(QString, phase);
        QTemporaryDir root;
        auto model = startedModel(root.path());
        const QString manual = model->manualCaptureDirectory();
        // Checkpoints home and settings, being swapped: home 01 -> 02, settings 02 -> 01.
        model->upsertManualScreen(1, saved ? "settings" : "home", saved ? "01-settings.png" : "01-home.png");
        model->upsertManualScreen(2, saved ? "home" : "settings", saved ? "02-home.png" : "02-settings.png");
        arrange(*model).project.screens
            = {ScreenDraft{.id = QUuid::createUuid().toString(QUuid::WithoutBraces), .name = "a"},
               ScreenDraft{.id = QUuid::createUuid().toString(QUuid::WithoutBraces), .name = "b"}};
        model->saveProject();
        if (phase == "parking") {
            TestSupport::writeFile(manual + "/.reorder-A.png", "home");
            TestSupport::writeFile(manual + "/02-settings.png", "settings"); // not parked yet
        } else {
            TestSupport::writeFile(manual + "/02-home.png", "home"); // placed
            TestSupport::writeFile(manual + "/.reorder-B.png", "settings"); // not placed yet
        }
        TestSupport::writeFile(manual + "/.reorder-journal.json",
                               "{\"phase\":\"" + phase.toUtf8()
                                   + "\",\"after\":[\"01-settings.png\",\"02-home.png\"],\"moves\":["
                                     "{\"from\":\"01-home.png\",\"parked\":\".reorder-A.png\",\"to\":\"02-home.png\"},"
                                     "{\"from\":\"02-settings.png\",\"parked\":\".reorder-B.png\",\"to\":\"01-settings.png\"}]}");
        model.reset();

        const auto next = startedModel(root.path());
        QVERIFY(!next->lastError());
        const QStringList expected = saved ? QStringList{"01-settings.png", "02-home.png"}
                                           : QStringList{"01-home.png", "02-settings.png"};
        QCOMPARE(QDir(manual).entryList(QDir::Files | QDir::Hidden, QDir::Name).join(", "), expected.join(", "));
        QCOMPARE(TestSupport::readFile(manual + "/" + expected.at(saved ? 1 : 0)), QByteArray("home"));
        QCOMPARE(TestSupport::readFile(manual + "/" + expected.at(saved ? 0 : 1)), QByteArray("settings"));
    }

    void leftoversOfAKilledProcessAreRemovedAtStart()
    {
        QTemporaryDir root;
        auto model = startedModel(root.path());
        const QString manual = model->manualCaptureDirectory();
        const QString workspace = model->workspaceDirectory();
        const QStringList litter{manual + "/.capture-1234.png", manual + "/.retake-99.png",
                                 workspace + "/.vantrel-write-AbC123.tmp",
                                 workspace + "/projects/.vantrel-write-XyZ789.tmp"};
        const QStringList kept{manual + "/.reorder-5.png", manual + "/01-home.png", manual + "/.notes.txt"};
        for (const QString &file : litter + kept)
            TestSupport::writeFile(file, "x");
        model.reset();
        startedModel(root.path());
        for (const QString &file : litter)
            QVERIFY2(!QFileInfo::exists(file), qPrintable(file));
        for (const QString &file : kept)
            QVERIFY2(QFileInfo::exists(file), qPrintable(file));
    }
};

VANTREL_TEST(SharedWorkspaceTest);
#include "SharedWorkspaceTest.moc"
