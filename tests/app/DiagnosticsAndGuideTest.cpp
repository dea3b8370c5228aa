// The diagnostics file and finding the customer guide shipped with a build.

#include "ModelFixture.h"
#include "TestSupport.h"

#include "app/CustomerGuide.h"

#include <QDir>
#include <QTest>

namespace {

using Fixture = ModelFixture;

} // namespace

class DiagnosticsAndGuideTest : public QObject
{
    Q_OBJECT

private slots:
    void diagnosticsHoldTheHeaderAndTheRunLog_data()
    {
        QTest::addColumn<QString>("attached"); // empty: not set
        QTest::addColumn<QStringList>("devices");
        QTest::addColumn<QString>("simulatorLine");
        QTest::newRow("attached name") << QString("iPhone 15 Pro") << QStringList{"UDID-1"}
                                       << QString("Simulator: iPhone 15 Pro");
        QTest::newRow("first device") << QString() << QStringList{"UDID-1", "UDID-2"}
                                      << QString("Simulator: UDID-1");
        QTest::newRow("nothing") << QString() << QStringList{} << QString("Simulator: none");
    }

    void diagnosticsHoldTheHeaderAndTheRunLog()
    {
        QFETCH(QString, attached);
        QFETCH(QStringList, devices);
        QFETCH(QString, simulatorLine);
        Fixture f;
        ScreenshotProject &p = arrange(*f.model).project;
        if (!attached.isEmpty())
            p.attachedDeviceName = attached;
        p.devices = devices;
        p.appName = "Shop";
        p.bundleId = "com.example.shop";
        p.languages = {"en-US", "de-DE"};
        p.screens = {ScreenDraft{"A", "a", "", "", 0, {}}, ScreenDraft{"B", "b", "", "", 0, {}}};
        f.model->appendLog("First line");
        f.model->appendLog("Second line\n");

        f.model->exportDiagnostics();
        const QString path = f.model->workspaceDirectory() + "/diagnostics.txt";
        QCOMPARE(f.platform->revealed, QStringList{path});
        const QStringList lines = QString::fromUtf8(TestSupport::readFile(path)).split('\n');
        QCOMPARE(lines.size(), 10);
        QCOMPARE(lines[0], QString("Vantrel Diagnostics"));
        QVERIFY(lines[1].startsWith("Generated at: ") && lines[1].size() > 20);
        QCOMPARE(lines.mid(2), (QStringList{simulatorLine, "App: Shop com.example.shop", "Languages: en-US, de-DE",
                                            "Checkpoints: 2", "", "First line", "Second line", ""}));
    }

    void aFailedExportSaysSoAndRevealsNothing()
    {
        Fixture f;
        QVERIFY(QDir().mkpath(f.model->workspaceDirectory() + "/diagnostics.txt")); // a folder in the way
        f.model->exportDiagnostics();
        QVERIFY(f.model->lastError() && f.model->lastError()->startsWith("Could not export diagnostics: "));
        QVERIFY(f.platform->revealed.isEmpty());
    }

    void guideIsLookedUpBundleFirstThenInstalledThenBuildTree()
    {
        const QStringList folders = CustomerGuide::searchFolders("/opt/vantrel/bin");
        QCOMPARE(folders.value(0), QString("/opt/vantrel/Resources"));
        QCOMPARE(folders.value(1), QString("/opt/vantrel/share/vantrel"));
        QVERIFY(folders.indexOf("/opt/vantrel/bin") > 1);

        QTemporaryDir dir;
        const QString guide = TestSupport::writeFile(dir.path() + "/b/CUSTOMER_READY.md", "# Guide\n");
        QDir().mkpath(dir.path() + "/a/CUSTOMER_READY.md"); // a folder by that name is not the guide
        QCOMPARE(CustomerGuide::find({dir.path() + "/a", dir.path() + "/b"}), std::optional<QString>(guide));
        QCOMPARE(CustomerGuide::find({dir.path() + "/a"}), std::nullopt);
    }
};

VANTREL_TEST(DiagnosticsAndGuideTest);
#include "DiagnosticsAndGuideTest.moc"
