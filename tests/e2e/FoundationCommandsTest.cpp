// The first commands of the real `vantrel` binary on a private data root.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

using E2E::Run;

// Runs vantrel with no simulator tools on PATH, so start-up stays quick.
Run vantrel(const QStringList &arguments, const QProcessEnvironment &extra = {})
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("PATH", "/nonexistent");
    env.remove("VANTREL_HOME");
    for (const QString &key : extra.keys())
        env.insert(key, extra.value(key));
    process.setProcessEnvironment(env);
    process.start(TestSupport::vantrelBinary(), arguments);
    process.waitForFinished(60000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

class FoundationCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void environmentRootAndOptionPrecedence()
    {
        QTemporaryDir fromEnvironment;
        QTemporaryDir fromOption;
        QProcessEnvironment env;
        env.insert("VANTREL_HOME", fromEnvironment.path());
        QCOMPARE(vantrel({"status"}, env).status, 0);
        QVERIFY(QFile::exists(fromEnvironment.path() + "/.quillmark/project.json"));
        QCOMPARE(vantrel({"--root", fromOption.path(), "status"}, env).status, 0);
        QVERIFY(QFile::exists(fromOption.path() + "/.quillmark/project.json"));
    }

    // A first command leaves a saved blank project; one that later fails to
    // load is never saved over, and the library commands still reach the others.
    void corruptProjectStaysOnDiskAndAnotherCanBeOpened()
    {
        QTemporaryDir root;
        const Run first = vantrel({"--root", root.path(), "status", "--json"});
        QCOMPARE(first.status, 0);
        const QString id = QJsonDocument::fromJson(first.out.toUtf8()).object().value("projectID").toString();
        QCOMPARE(id.size(), 36);
        QCOMPARE(id, id.toUpper());
        for (const QString &file : {"/.quillmark/projects/" + id + ".json", QString("/.quillmark/project.json"),
                                    QString("/.quillmark/current-project-id.txt")})
            QVERIFY2(QFile::exists(root.path() + file), qPrintable(file));
        const QJsonObject saved =
            QJsonDocument::fromJson(TestSupport::readFile(root.path() + "/.quillmark/projects/" + id + ".json")).object();
        QCOMPARE(saved.value("schemaVersion").toInt(), 2);
        QCOMPARE(saved.value("languages").toArray(), QJsonArray({"en-US"}));
        QCOMPARE(saved.value("manualScreens").toArray(), QJsonArray());
        QCOMPARE(saved.value("outputDirectory").toString(),
                 root.path() + "/output/untitled-project-" + id.left(8).toLower());

        TestSupport::writeFile(root.path() + "/.quillmark/current-project-id.txt", "ABC");
        const QByteArray corrupt = R"({"schemaVersion": 2, "appName": 5})";
        TestSupport::writeFile(root.path() + "/.quillmark/projects/ABC.json", corrupt);
        const Run status = vantrel({"--root", root.path(), "status"});
        QCOMPARE(status.status, 1);
        QVERIFY2(status.err.startsWith("Could not load saved project: "), qPrintable(status.err));
        QCOMPARE(vantrel({"--root", root.path(), "projects", "rename", "X"}).status, 1);
        QCOMPARE(vantrel({"--root", root.path(), "snapshots", "create"}).status, 1);

        const Run list = vantrel({"--root", root.path(), "projects"});
        QCOMPARE(list.status, 0);
        QVERIFY2(list.err.startsWith("Could not load saved project: "), qPrintable(list.err));
        QVERIFY(list.out.contains(id));
        QCOMPARE(vantrel({"--root", root.path(), "projects", "open", id}).status, 0);
        QCOMPARE(vantrel({"--root", root.path(), "status"}).status, 0);
        QCOMPARE(TestSupport::readFile(root.path() + "/.quillmark/projects/ABC.json"), corrupt);
    }

    // A project that loads but cannot be written back (a folder stands where
    // the mirror file belongs) is reported as a failed save; commands that
    // only read it still run, and one that changes it says its save failed.
    void startUpSaveFailureStillReadsTheProject()
    {
        QTemporaryDir root;
        QCOMPARE(vantrel({"--root", root.path(), "languages", "toggle", "de-DE"}).status, 0);
        const QString mirror = root.path() + "/.quillmark/project.json";
        QVERIFY(QFile::remove(mirror));
        QVERIFY(QDir().mkpath(mirror + "/inside"));

        const Run languages = vantrel({"--root", root.path(), "languages"});
        QVERIFY2(languages.err.startsWith("Could not save project: "), qPrintable(languages.err));
        QVERIFY(!languages.err.contains("load"));
        QCOMPARE(languages.out, QString("en-US     English (United States)\nde-DE     German (Germany)\n"));
        QCOMPARE(languages.status, 0);

        const Run toggle = vantrel({"--root", root.path(), "languages", "toggle", "fr-FR"});
        QCOMPARE(toggle.status, 1);
        QVERIFY2(toggle.err.endsWith("\n") && toggle.err.count("Could not save project: ") == 2, qPrintable(toggle.err));
        QVERIFY(!toggle.err.contains("Cannot "));
    }
};

VANTREL_TEST(FoundationCommandsTest);
#include "FoundationCommandsTest.moc"
