// Checkpoints on disk and in the project: capturing and naming, the
// temporary files, renumbering without losing an image, the Trash, and
// rebuilding the records from images found at start.

#include "ModelFixture.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTest>

namespace {

// An `xcrun` first on PATH whose `simctl io UDID screenshot PATH` copies the
// image prepared with setScreen(), and fails when there is none.
class ScreenshotStandIn
{
public:
    ScreenshotStandIn() : m_savedPath(qgetenv("PATH"))
    {
        const QString script = m_dir.path() + "/xcrun";
        TestSupport::writeFile(script, QStringLiteral("#!/bin/sh\n"
                                                      "[ \"$1 $2 $4\" = 'simctl io screenshot' ] || exit 1\n"
                                                      "[ -f '%1/screen.png' ] || { echo 'No booted device.' >&2; exit 2; }\n"
                                                      "cp '%1/screen.png' \"$5\"\n")
                                           .arg(m_dir.path())
                                           .toUtf8());
        QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", (m_dir.path() + ":").toUtf8() + m_savedPath);
    }
    ~ScreenshotStandIn() { qputenv("PATH", m_savedPath); }

    void setScreen(QColor colour)
    {
        QImage image(40, 80, QImage::Format_RGB32);
        image.fill(colour);
        image.save(m_dir.path() + "/screen.png");
    }
    void removeScreen() { QFile::remove(m_dir.path() + "/screen.png"); }
    // A file that begins like a PNG and then breaks off.
    void corruptScreen()
    {
        const QByteArray png = TestSupport::readFile(m_dir.path() + "/screen.png");
        TestSupport::writeFile(m_dir.path() + "/screen.png", png.left(40));
    }

private:
    QTemporaryDir m_dir;
    QByteArray m_savedPath;
};

struct Checkpoints : ModelFixture
{
    Checkpoints()
    {
        arrange(*model).project.outputDirectory = root.path() + "/out";
        arrange(*model).project.devices = {QStringLiteral("UDID-1")};
    }

    QString manual(const QString &name = {}) const { return model->manualCaptureDirectory() + "/" + name; }

    QStringList files() const
    {
        return QDir(manual()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    // Checkpoints whose images hold their own names, each after one tap.
    void make(const QStringList &names)
    {
        for (qsizetype i = 0; i < names.size(); ++i) {
            const QString file = AppModel::checkpointFileName(i + 1, names.at(i));
            TestSupport::writeFile(manual(file), names.at(i).toUtf8() + QByteArray::number(i + 1));
            model->upsertManualScreen(i + 1, names.at(i), file);
            arrange(*model).project.screens.append(
                ScreenDraft{.name = names.at(i), .operations = {OperationDraft::tap(i, i)}});
        }
        arrange(*model).project.manualCaptureIndex = names.size() + 1;
    }

    ManualScreenDraft at(qsizetype position) const { return model->manualScreens().at(position); }
    QByteArray image(const QString &file) const { return TestSupport::readFile(manual(file)); }
    QList<qint64> screenTaps() const
    {
        QList<qint64> taps;
        for (const ScreenDraft &screen : model->project().screens)
            taps.append(screen.operations.first().as<TapOperation>()->x);
        return taps;
    }
};

} // namespace

class CheckpointsTest : public QObject
{
    Q_OBJECT

private slots:
    void namesBeforeTheCapture()
    {
        Checkpoints c;
        QCOMPARE(c.model->manualCaptureFilenamePreview(" \n"), QStringLiteral("01-auto-name.png"));
        QCOMPARE(c.model->manualCaptureFilenamePreview("  My Screen! "), QStringLiteral("01-My-Screen.png"));
        QCOMPARE(c.model->manualCaptureName(" "), QStringLiteral("initial-screen"));
        c.model->upsertManualScreen(1, "home", "01-home.png");
        QCOMPARE(c.model->manualCaptureName(""), QStringLiteral("screen"));
        arrange(*c.model).project.manualCaptureIndex = 100;
        QCOMPARE(c.model->manualCaptureFilenamePreview("../../etc"), QStringLiteral("100-etc.png"));
        arrange(*c.model).project.manualCaptureIndex = -4;
        QCOMPARE(c.model->nextManualCaptureIndex(), 1);
    }

    // A failed capture leaves no file, no record and the pending actions.
    void failedCaptureLeavesNothingBehind_data()
    {
        QTest::addColumn<bool>("corrupt"); // else the tool finds no device
        QTest::addColumn<QString>("detail");
        QTest::newRow("no booted device") << false << "No booted device.";
        QTest::newRow("not a picture") << true << ": The Simulator's screenshot is not a readable PNG image";
    }

    void failedCaptureLeavesNothingBehind()
    {
        QFETCH(bool, corrupt);
        QFETCH(QString, detail);
        ScreenshotStandIn xcrun;
        if (corrupt) {
            xcrun.setScreen(Qt::green);
            xcrun.corruptScreen();
        }
        Checkpoints c;
        arrange(*c.model).isRecordingFlow = true;
        arrange(*c.model).pendingOperations = {OperationDraft::tap(1, 1)};
        c.model->captureManualScreenshot("home");
        const QString error = c.model->lastError().value_or("");
        QVERIFY2(error.startsWith("Could not capture current simulator: ") && error.contains(detail), qPrintable(error));
        QVERIFY(c.files().isEmpty());
        QVERIFY(c.model->manualScreens().isEmpty() && c.model->project().screens.isEmpty());
        QCOMPARE(c.model->pendingOperations().size(), 1);
        QCOMPARE(c.model->project().manualCaptureIndex, 1);
    }

    void captureReplacesTheSameNumberAndName()
    {
        ScreenshotStandIn xcrun;
        xcrun.setScreen(Qt::green);
        Checkpoints c;
        c.make({"a", "b", "home"});
        arrange(*c.model).project.manualCaptureIndex = 3;
        c.model->captureManualScreenshot("home");
        QCOMPARE(c.files(), (QStringList{"01-a.png", "02-b.png", "03-home.png"}));
        QCOMPARE(QImage(c.manual("03-home.png")).pixelColor(0, 0), QColor(Qt::green));
        QCOMPARE(c.model->manualScreens().size(), 3);
    }

    void movingSwapsImagesAndNavigation_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("files");
        QTest::newRow("different names") << QStringList{"home", "settings"} << QStringList{"01-settings.png", "02-home.png"};
        // Each image takes a number the other one holds under the same name.
        QTest::newRow("same names") << QStringList{"screen", "screen"} << QStringList{"01-screen.png", "02-screen.png"};
    }

    void movingSwapsImagesAndNavigation()
    {
        QFETCH(QStringList, names);
        QFETCH(QStringList, files);
        Checkpoints c;
        c.make(names);
        c.model->moveCheckpoint(c.at(0), +1);
        QVERIFY(!c.model->lastError());
        QCOMPARE(c.files(), files);
        QCOMPARE(c.image(files.at(0)), names.at(1).toUtf8() + "2");
        QCOMPARE(c.image(files.at(1)), names.at(0).toUtf8() + "1");
        QCOMPARE(c.at(0).index, 1);
        QCOMPARE(c.at(0).name, names.at(1));
        QCOMPARE(c.screenTaps(), (QList<qint64>{1, 0}));
        QCOMPARE(c.model->project().manualCaptureIndex, 3);
    }

    void movingPastEitherEndDoesNothing()
    {
        Checkpoints c;
        c.make({"home", "settings"});
        const QList<ManualScreenDraft> before = c.model->manualScreens();
        c.model->moveCheckpoint(c.at(0), -1);
        c.model->moveCheckpoint(c.at(1), +1);
        c.model->moveCheckpoint(ManualScreenDraft{.id = "unknown"}, 0);
        QCOMPARE(c.model->manualScreens(), before);
        QCOMPARE(c.image("01-home.png"), QByteArray("home1"));
    }

    void deletingRenumbersTheRest()
    {
        Checkpoints c;
        c.make({"a", "b", "c"});
        c.model->deleteCheckpoint(c.at(1));
        QVERIFY(!c.model->lastError());
        QCOMPARE(c.platform->trashed, QStringList{c.manual("02-b.png")});
        QCOMPARE(c.files(), (QStringList{"01-a.png", "02-c.png"}));
        QCOMPARE(c.image("02-c.png"), QByteArray("c3"));
        QCOMPARE(c.screenTaps(), (QList<qint64>{0, 2}));
        QCOMPARE(c.model->project().manualCaptureIndex, 3);
        QCOMPARE(c.model->lastManualCaptureURL(), c.manual("02-c.png"));
    }

    void trashingAnImageFreesItsNumberOnlyWhenNewest_data()
    {
        QTest::addColumn<int>("trashed");
        QTest::addColumn<int>("nextIndex");
        QTest::newRow("4 of 4") << 4 << 4;
        QTest::newRow("2 of 4") << 2 << 5;
    }

    void trashingAnImageFreesItsNumberOnlyWhenNewest()
    {
        QFETCH(int, trashed);
        QFETCH(int, nextIndex);
        Checkpoints c;
        c.make({"a", "b", "c", "d"});
        c.model->moveScreenshotToTrash(c.manual(c.at(trashed - 1).filename.value()));
        QCOMPARE(c.model->project().manualCaptureIndex, nextIndex);
        QCOMPARE(c.model->manualScreens().size(), 3);
        QCOMPARE(c.model->project().screens.size(), 3);
        QCOMPARE(c.model->lastManualCaptureURL(), c.manual(trashed == 4 ? "03-c.png" : "04-d.png"));
    }

    // A document may name images anywhere; only files inside "manual" are
    // ever moved, replaced or deleted, and a refused name stops the whole
    // operation before anything changes. (Names above the folder and
    // absolute ones are run through the command line in HostileFilesTest.)
    void namesLeadingOutOfTheFolderAreLeftAlone_data()
    {
        QTest::addColumn<QString>("hostile"); // how checkpoint 2 names its image
        QTest::newRow("separator") << "sub/02-b.png";
        QTest::newRow("link out") << "LINK";
    }

    void namesLeadingOutOfTheFolderAreLeftAlone()
    {
        QFETCH(QString, hostile);
        ScreenshotStandIn xcrun;
        xcrun.setScreen(Qt::red);
        Checkpoints c;
        c.make({"a", "b", "c"});
        const QString victim = TestSupport::writeFile(c.root.path() + "/outside/victim.png", "precious");
        TestSupport::writeFile(c.manual("sub/02-b.png"), "precious");
        QFile::remove(c.manual("02-b.png"));
        if (hostile == "LINK") {
            QVERIFY(QFile::link(victim, c.manual("02-b.png")));
            hostile = "02-b.png";
        }
        QList<ManualScreenDraft> screens = c.model->manualScreens();
        screens[1].filename = hostile;
        arrange(*c.model).project.manualScreens = screens;
        const QList<ManualScreenDraft> before = c.model->manualScreens();
        const QStringList filesBefore = c.files();

        const auto refused = [&](const char *what) {
            QVERIFY2(c.model->lastError() && c.model->lastError()->contains("Checkpoint 2 was left alone: "),
                     qPrintable(QString(what) + ": " + c.model->lastError().value_or("no error")));
            QCOMPARE(TestSupport::readFile(victim), QByteArray("precious"));
            QCOMPARE(TestSupport::readFile(c.manual("sub/02-b.png")), QByteArray("precious"));
            QCOMPARE(c.model->manualScreens(), before);
            QCOMPARE(c.files(), filesBefore);
            QVERIFY(c.platform->trashed.isEmpty());
            c.model->clearLastError();
        };
        c.model->moveCheckpoint(c.at(0), +1);
        refused("move");
        c.model->deleteCheckpoint(c.at(1));
        refused("delete the hostile one");
        c.model->deleteCheckpoint(c.at(2));
        refused("delete another one");
        c.model->retakeCheckpoint(c.at(1));
        refused("retake");

        // A reset removes the images its checkpoints name inside the folder, no more.
        c.model->resetRecordedFlow();
        QCOMPARE(TestSupport::readFile(victim), QByteArray("precious"));
        QCOMPARE(TestSupport::readFile(c.manual("sub/02-b.png")), QByteArray("precious"));
        QVERIFY(!QFileInfo::exists(c.manual("01-a.png")) && !QFileInfo::exists(c.manual("03-c.png")));
        QVERIFY(c.model->runLog().contains("Checkpoint 2 was left alone: "));
    }

    void resetKeepsTheUsersOwnFiles()
    {
        Checkpoints c;
        c.make({"a", "b"});
        TestSupport::writeFile(c.manual("notes.png"), "mine");
        TestSupport::writeFile(c.manual("07-mine.png"), "mine");
        c.model->resetRecordedFlow();
        QCOMPARE(c.files(), (QStringList{"07-mine.png", "notes.png"}));
        QVERIFY(c.model->manualScreens().isEmpty());
    }

    void syncRebuildsCheckpointsFromNumberedImages()
    {
        Checkpoints c;
        arrange(*c.model).project.manualScreens.reset();
        for (const char *file : {"01-home.png", "02-my-settings.png", "10-ten.png", "07.png", "9-nine.png",
                                 "notes.png", ".capture-1234.png", "03-text.txt"})
            TestSupport::writeFile(c.manual(file), "x");
        c.model->syncManualScreensFromExistingCapturesIfNeeded();
        QStringList seen;
        for (const ManualScreenDraft &s : c.model->manualScreens())
            seen.append(QStringLiteral("%1 %2 %3").arg(s.index).arg(s.name, s.filename.value_or("")));
        // Numbers by value, also where the environment sets no locale.
        QCOMPARE(seen, (QStringList{"1 home 01-home.png", "2 my-settings 02-my-settings.png", "7 screen 07.png",
                                    "9 nine 9-nine.png", "10 ten 10-ten.png"}));

        // Records that exist are never replaced from the folder.
        arrange(*c.model).project.manualScreens = QList<ManualScreenDraft>{{"ID", 1, "kept", std::nullopt}};
        c.model->syncManualScreensFromExistingCapturesIfNeeded();
        QCOMPARE(c.model->manualScreens().size(), 1);
    }
};

VANTREL_TEST(CheckpointsTest);
#include "CheckpointsTest.moc"
