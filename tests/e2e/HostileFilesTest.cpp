// A damaged or hostile project document against the real `vantrel`: file
// names that lead out of the output folder, and a "manual" folder that is a
// link elsewhere. Whatever the document says, files outside the project's
// own folders stay byte-identical.

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

// Rewrites the saved current project with `edit` applied.
void editProject(const DeviceWorld &world, const std::function<void(QJsonObject &)> &edit)
{
    QJsonObject project = world.savedProject();
    edit(project);
    const QByteArray bytes = QJsonDocument(project).toJson(QJsonDocument::Compact);
    const QString workspace = world.root() + "/.quillmark";
    TestSupport::writeFile(workspace + "/projects/" + project["projectID"].toString() + ".json", bytes);
    TestSupport::writeFile(workspace + "/project.json", bytes);
}

void setFilename(QJsonObject &project, int position, const QString &filename)
{
    QJsonArray screens = project["manualScreens"].toArray();
    QJsonObject screen = screens.at(position).toObject();
    screen["filename"] = filename;
    screens[position] = screen;
    project["manualScreens"] = screens;
}

} // namespace

class HostileFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real developer tools would answer instead of the device stand-in");
    }

    void checkpointNamesOutsideTheOutputFolder()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        const Run recorded = world.record("checkpoint trips\ntap 147 790\ncheckpoint explore\ntap 245 790\n"
                                          "checkpoint saved\nstop\n");
        QVERIFY2(recorded.status == 0, qPrintable(recorded.err));
        const QString output = world.savedProject()["outputDirectory"].toString();
        const QString manual = output + "/manual";

        const QString above = TestSupport::writeFile(world.root() + "/victim.png", "above the output");
        const QString absolute = TestSupport::writeFile(world.scratch() + "/absolute.png", "somewhere else");
        const QString mine = TestSupport::writeFile(manual + "/notes.png", "the user's own");
        editProject(world, [&](QJsonObject &project) {
            setFilename(project, 1, QDir(manual).relativeFilePath(above));
            setFilename(project, 2, absolute);
        });
        const auto untouched = [&](const QString &step) {
            QVERIFY2(TestSupport::readFile(above) == "above the output", qPrintable(step));
            QVERIFY2(TestSupport::readFile(absolute) == "somewhere else", qPrintable(step));
            QVERIFY2(TestSupport::readFile(mine) == "the user's own", qPrintable(step));
        };

        for (const QStringList &action : {QStringList{"move", "1", "1"}, QStringList{"move", "3", "-1"},
                                          QStringList{"retake", "2"}, QStringList{"delete", "2"},
                                          QStringList{"delete", "1"}}) {
            const Run run = world.vantrel(QStringList{"checkpoints"} + action, world.privateHome());
            QVERIFY2(run.status == 1, qPrintable(action.join(' ') + ": " + run.err));
            QVERIFY2(run.err.contains(" was left alone: "), qPrintable(run.err));
            untouched(action.join(' '));
        }
        QCOMPARE(world.vantrel({"checkpoints", "delete-last"}, world.privateHome()).status, 0);
        untouched("delete-last");
        world.vantrel({"generate"});
        untouched("generate");

        const Run reset = world.vantrel({"record", "reset"});
        QCOMPARE(reset.status, 0);
        untouched("reset");
        QVERIFY(!QFileInfo::exists(manual + "/01-trips.png"));
        // Checkpoint 2's own image is no longer named by the document, so it stays too.
        QCOMPARE(QDir(manual).entryList(QDir::Files, QDir::Name), (QStringList{"02-explore.png", "notes.png"}));
    }

    void manualFolderThatLeadsElsewhere()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        QVERIFY(world.record("checkpoint trips\ntap 147 790\ncheckpoint explore\nstop\n").status == 0);
        const QString manual = world.savedProject()["outputDirectory"].toString() + "/manual";
        const QString elsewhere = world.scratch() + "/photos";
        QVERIFY(QDir().rename(manual, elsewhere));
        QVERIFY(QFile::link(elsewhere, manual));

        QCOMPARE(world.vantrel({"checkpoints", "delete-last"}, world.privateHome()).status, 1);
        QVERIFY(world.vantrel({"checkpoints", "move", "1", "1"}, world.privateHome()).err.contains("leads outside"));
        QCOMPARE(world.vantrel({"record", "reset"}).status, 0);
        QCOMPARE(QDir(elsewhere).entryList(QDir::Files, QDir::Name), (QStringList{"01-trips.png", "02-explore.png"}));
    }
};

VANTREL_TEST(HostileFilesTest);
#include "HostileFilesTest.moc"
