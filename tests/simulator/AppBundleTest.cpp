// Reading .app bundles from disk and making one the project's app.

#include "ModelFixture.h"
#include "SimulatorFixtures.h"
#include "TestSupport.h"

#include "model/AppError.h"
#include "simulator/AppBundleInspector.h"

#include <QDir>
#include <QTest>
#include <cstdlib>
#include <plist/plist.h>

using InfoEntries = QList<QPair<QString, QString>>;

namespace {

// A binary Info.plist holding `entries` (text values, or text lists when
// the value holds a "|").
QByteArray binaryInfo(const InfoEntries &entries)
{
    plist_t dict = plist_new_dict();
    for (const auto &[key, value] : entries) {
        plist_t node;
        if (value.contains('|')) {
            node = plist_new_array();
            for (const QString &item : value.split('|', Qt::SkipEmptyParts))
                plist_array_append_item(node, plist_new_string(item.toUtf8().constData()));
        } else {
            node = plist_new_string(value.toUtf8().constData());
        }
        plist_dict_set_item(dict, key.toUtf8().constData(), node);
    }
    char *bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(dict, &bytes, &length);
    const QByteArray result(bytes, length);
    std::free(bytes);
    plist_free(dict);
    return result;
}

QString makeBundle(const QString &path, const QByteArray &info, const QStringList &entries = {})
{
    QDir().mkpath(path);
    if (!info.isNull())
        TestSupport::writeFile(path + "/Info.plist", info);
    for (const QString &entry : entries) {
        if (entry.endsWith('/'))
            QDir().mkpath(path + '/' + entry);
        else
            TestSupport::writeFile(path + '/' + entry, "x");
    }
    return path;
}

QString inspectionError(const QString &bundle)
{
    try {
        AppBundleInspector::inspect(bundle);
    } catch (const AppError &error) {
        return error.message();
    }
    return "(read)";
}

} // namespace

class AppBundleTest : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

private slots:
    void xmlInfoAndLocalizations()
    {
        const QString bundle = makeBundle(dir.filePath("xml/Demo.app"), SimulatorFixtures::xmlInfoPlist,
                                          {"en.lproj/", "Base.lproj/", "de.lproj/", "zh-Hans.lproj/", "notes.txt",
                                           "fr.lproj.bak/", "pt-BR.lproj"});
        const AppBundleInspector::Info info = AppBundleInspector::inspect(bundle);
        QCOMPARE(info.bundleIdentifier, QString("com.example.demo"));
        QCOMPARE(info.displayName, QString("Démo"));
        QVERIFY(info.isSimulatorBuild);
        QCOMPARE(info.localizations, (QStringList{"de", "en", "pt-BR", "zh-Hans"}));
    }

    void binaryInfo_data()
    {
        QTest::addColumn<QString>("bundleName");
        QTest::addColumn<InfoEntries>("entries");
        QTest::addColumn<QString>("displayName");
        QTest::addColumn<bool>("simulator");
        QTest::newRow("bundle name") << "Shop.app"
                                     << InfoEntries{{"CFBundleIdentifier", "a.b"}, {"CFBundleName", "Shop Name"},
                                                {"CFBundleSupportedPlatforms", "iPhoneOS|"}}
                                     << "Shop Name" << false;
        QTest::newRow("file name") << "My.Demo.app"
                                   << InfoEntries{{"CFBundleIdentifier", "a.b"},
                                              {"CFBundleSupportedPlatforms", "iPhoneOS|iPhoneSimulator"}}
                                   << "My.Demo" << true;
        QTest::newRow("platforms not a list") << "X.app"
                                              << InfoEntries{{"CFBundleIdentifier", "a.b"},
                                                         {"CFBundleSupportedPlatforms", "iPhoneSimulator"}}
                                              << "X" << false;
    }

    void binaryInfo()
    {
        QFETCH(QString, bundleName);
        QFETCH(InfoEntries, entries);
        QFETCH(QString, displayName);
        QFETCH(bool, simulator);
        const QString bundle = makeBundle(dir.filePath(QTest::currentDataTag() + QString("/") + bundleName),
                                          ::binaryInfo(entries));
        const AppBundleInspector::Info info = AppBundleInspector::inspect(bundle);
        QCOMPARE(info.displayName, displayName);
        QCOMPARE(info.isSimulatorBuild, simulator);
        QCOMPARE(info.localizations, QStringList{});
    }

    void unreadableBundles_data()
    {
        QTest::addColumn<QByteArray>("info");
        QTest::addColumn<QString>("message");
        const QString noIdentifier = "Could not read CFBundleIdentifier from Info.plist.";
        QTest::newRow("no Info.plist") << QByteArray() << "Could not read %1/Info.plist: ";
        QTest::newRow("corrupt") << QByteArray("<plist><dict><key>oops") << "%1/Info.plist is not a valid property list.";
        QTest::newRow("empty file") << QByteArray("") << "%1/Info.plist is not a valid property list.";
        QTest::newRow("truncated binary") << ::binaryInfo({{"CFBundleIdentifier", "a.b"}}).left(20)
                                          << "%1/Info.plist is not a valid property list.";
        QTest::newRow("no identifier") << ::binaryInfo({{"CFBundleName", "X"}}) << noIdentifier;
        QTest::newRow("empty identifier") << ::binaryInfo({{"CFBundleIdentifier", ""}}) << noIdentifier;
        QTest::newRow("identifier not text")
            << QByteArray("<plist><dict><key>CFBundleIdentifier</key><integer>3</integer></dict></plist>") << noIdentifier;
        QTest::newRow("top level array")
            << QByteArray("<plist><array><string>CFBundleIdentifier</string></array></plist>") << noIdentifier;
    }

    void unreadableBundles()
    {
        QFETCH(QByteArray, info);
        QFETCH(QString, message);
        const QString bundle = makeBundle(dir.filePath(QTest::currentDataTag() + QString("/Bad.app")), info);
        QVERIFY2(inspectionError(bundle).startsWith(message.arg(bundle)), qPrintable(inspectionError(bundle)));
    }

    void setAppBundleRefusesWithoutChanges_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("message");
        QTest::newRow("not an app") << dir.filePath("Demo.zip") << "Choose a simulator .app bundle.";
        QTest::newRow("app in the name only") << dir.filePath("Demo.apps") << "Choose a simulator .app bundle.";
        QTest::newRow("no identifier")
            << makeBundle(dir.filePath("noid/Demo.app"), ::binaryInfo({{"CFBundleName", "X"}}), {"fr.lproj/"})
            << "Could not read CFBundleIdentifier from Info.plist.";
    }

    void setAppBundleRefusesWithoutChanges()
    {
        QFETCH(QString, path);
        QFETCH(QString, message);
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        arrange(model).project.screens = {ScreenDraft{"S1", "Home"}};
        const ScreenshotProject before = model.project();
        model.setAppBundle(path);
        QCOMPARE(model.lastError().value_or(QString()), message);
        QCOMPARE(model.project(), before);
    }

    void setAppBundleResetsTheFlowOnlyForAnotherApp()
    {
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        ScreenshotProject &p = arrange(model).project;
        p.screens = {ScreenDraft{"S1", "Home"}};
        p.manualScreens = QList<ManualScreenDraft>{{"M1", 1, "Home", "01-home.png"}};
        p.globalLaunchArguments = {"-UITests"};
        p.stateArgumentName = "custom.state";
        p.sampleNameArgumentName = "sample";
        p.manualCaptureIndex = 4;
        p.attachedDeviceName = "iPhone 15";
        p.languages = {"ja"};
        arrange(model).pendingOperations = {OperationDraft::wait(1.0)};

        const QString bundle = makeBundle(dir.filePath("flow/Demo.app"), SimulatorFixtures::xmlInfoPlist, {"en.lproj/", "de.lproj/"});
        model.setAppBundle(bundle + "/");
        QVERIFY(!model.lastError());
        QCOMPARE(p.appPath, bundle);
        QCOMPARE(p.appName, QString("Démo"));
        QCOMPARE(p.bundleId, QString("com.example.demo"));
        QVERIFY(p.isSimulatorBuild);
        QCOMPARE(p.attachedDeviceName, std::nullopt);
        QCOMPARE(p.languages, (QStringList{"de", "en"}));
        QVERIFY(p.screens.isEmpty() && p.globalLaunchArguments.isEmpty() && model.pendingOperations().isEmpty());
        QCOMPARE(p.stateArgumentName, QString("vantrel.screen"));
        QCOMPARE(p.sampleNameArgumentName, QString());
        QCOMPARE(p.manualCaptureIndex, std::optional<qint64>(1));
        QCOMPARE(p.manualScreens->size(), 1);
        QCOMPARE(QFileInfo(p.outputDirectory).fileName(), "démo-" + p.projectID->left(8).toLower());

        // The same bundle at the same place again keeps what was recorded since.
        p.screens = {ScreenDraft{"S2", "Settings"}};
        model.setAppBundle(bundle);
        QCOMPARE(p.screens.size(), 1);

        // The same app at another place is another build: the flow starts over.
        const QString moved = makeBundle(dir.filePath("moved/Demo.app"), SimulatorFixtures::xmlInfoPlist);
        p.languages = {};
        model.setAppBundle(moved);
        QVERIFY(p.screens.isEmpty());
        QCOMPARE(p.appPath, moved);
        QCOMPARE(p.languages, QStringList{"en-US"});

        p.languages = {"fr", "it"};
        model.setAppBundle(moved);
        QCOMPARE(p.languages, (QStringList{"fr", "it"}));
    }
};

VANTREL_TEST(AppBundleTest);
#include "AppBundleTest.moc"
