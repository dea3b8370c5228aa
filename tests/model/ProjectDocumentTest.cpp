// The project document's JSON form: what is written, what is accepted, and
// what is refused.

#include "TestSupport.h"

#include "model/AppError.h"
#include "model/ProjectCoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

QJsonObject minimalDocument()
{
    return QJsonDocument::fromJson(R"({
        "schemaVersion": 2, "appPath": "", "appName": "", "bundleId": "",
        "isSimulatorBuild": false, "outputDirectory": "/out", "devices": [],
        "languages": ["en-US"], "openSimulator": true, "resetAppData": true,
        "launchWaitSeconds": 2.0, "globalLaunchArguments": [],
        "stateArgumentName": "vantrel.screen", "sampleNameArgumentName": "",
        "screens": []
    })").object();
}

const QString screenID = QStringLiteral("3F2504E0-4F89-11D3-9A0C-0305E82C3301");

QJsonObject withScreenOperation(const QJsonValue &operation)
{
    QJsonObject document = minimalDocument();
    QJsonObject screen{{"id", screenID}, {"name", "n"}, {"state", ""}, {"sampleName", ""},
                       {"launchWaitSeconds", 0}, {"operations", QJsonArray{operation}}};
    document.insert("screens", QJsonArray{screen});
    return document;
}

QByteArray bytes(const QJsonObject &object) { return QJsonDocument(object).toJson(); }

QString decodeError(const QByteArray &data)
{
    try {
        ProjectCoding::decode(data);
    } catch (const AppError &error) {
        return error.message();
    }
    return {};
}

} // namespace

Q_DECLARE_METATYPE(OperationDraft)

class ProjectDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void roundTripKeepsEveryField()
    {
        ScreenshotProject p;
        p.projectID = "3F2504E0-4F89-11D3-9A0C-0305E82C3301";
        p.projectName = "Trips";
        p.createdAt = 10.0;
        p.updatedAt = 816958511.918273;
        p.appName = "Trips Café";
        p.bundleId = "com.example.trips";
        p.attachedDeviceName = "iPhone 15 Pro";
        p.devices = {"UDID-1"};
        p.languages = {"de-DE", "pt-BR"};
        p.launchWaitSeconds = 0.15;
        p.manualCaptureIndex = 9007199254740993LL; // not representable as a double
        ScreenDraft screen{screenID, "Home", "", "", 1.5,
                           {OperationDraft::tap(120, 640), OperationDraft::wait(1.5),
                            OperationDraft::swipe(-3, 10, 200, 900, 0.35), OperationDraft::type("Zoë \"q\"\n")}};
        p.screens = {screen};
        p.manualScreens = QList<ManualScreenDraft>{{"A5F0C1D2-0000-4000-8000-000000000001", 1, "Home", "01-home.png"},
                                                   {"A5F0C1D2-0000-4000-8000-000000000002", 2, "Search", std::nullopt}};
        p.recordedOn = RecordingDevice{"iPhone 15 Pro", 393, 852.5};

        const ScreenshotProject back = ProjectCoding::decode(ProjectCoding::encodeBytes(p));
        QCOMPARE(back, p);
        QCOMPARE(*back.manualCaptureIndex, 9007199254740993LL);
    }

    void optionalValuesAreOmittedNotNull()
    {
        ScreenshotProject p;
        p.manualCaptureIndex.reset();
        p.manualScreens.reset();
        const QJsonObject o = ProjectCoding::encode(p);
        for (const char *key : {"projectID", "projectName", "createdAt", "updatedAt", "attachedDeviceName",
                                "manualCaptureIndex", "manualScreens", "recordedOn"})
            QVERIFY2(!o.contains(key), key);
        QCOMPARE(ProjectCoding::encode(ScreenshotProject{}).value("manualScreens").toArray().size(), 0);
    }

    void datesAreReferenceSeconds()
    {
        ScreenshotProject p;
        p.createdAt = ReferenceDate::fromDateTime(QDateTime::fromString("2001-01-01T00:00:10Z", Qt::ISODate));
        QCOMPARE(ProjectCoding::encode(p).value("createdAt").toDouble(), 10.0);
        QCOMPARE(ReferenceDate::toDateTime(10).toUTC(), QDateTime::fromString("2001-01-01T00:00:10Z", Qt::ISODate));
    }

    void decoding_data()
    {
        QTest::addColumn<QString>("key"); // "operation": the value is the one screen's one operation
        QTest::addColumn<QJsonValue>("value"); // Undefined: remove the key
        QTest::addColumn<QString>("error"); // empty: decodes
        const auto operation = [](const char *json) { return QJsonValue(QJsonDocument::fromJson(json).object()); };
        const QString oneKey = "Invalid number of keys found, expected one.";
        QTest::newRow("tap plus unknown key") << "operation" << operation(R"({"tap":{"x":1,"y":2},"note":"x"})") << "";
        QTest::newRow("tap and wait") << "operation" << operation(R"({"tap":{"x":1,"y":2},"wait":{"seconds":1}})") << oneKey;
        QTest::newRow("only unknown key") << "operation" << operation(R"({"pinch":{}})") << oneKey;
        QTest::newRow("empty object") << "operation" << operation("{}") << oneKey;
        QTest::newRow("fractional tap") << "operation" << operation(R"({"tap":{"x":1.5,"y":2}})") << "whole number";
        QTest::newRow("tap beyond 64 bits") << "operation" << operation(R"({"tap":{"x":1e30,"y":2}})") << "whole number";
        QTest::newRow("missing payload field") << "operation" << operation(R"({"swipe":{"startX":1,"startY":2,"endX":3,"endY":4}})")
                                               << "\"screens[0].operations[0].swipe.duration\" is missing";
        QTest::newRow("mistyped text") << "operation" << operation(R"({"type":{"text":5}})") << "should be text";
        QTest::newRow("missing appName") << "appName" << QJsonValue(QJsonValue::Undefined) << "\"appName\" is missing";
        QTest::newRow("languages not a list") << "languages" << QJsonValue("en-US") << "\"languages\" should be a list";
        QTest::newRow("language not text") << "languages" << QJsonValue(QJsonArray{"en-US", 3}) << "\"languages[1]\" should be text";
        QTest::newRow("bool as string") << "openSimulator" << QJsonValue("yes") << "\"openSimulator\" should be a boolean";
        QTest::newRow("index without index") << "manualScreens" << QJsonValue(QJsonArray{QJsonObject{{"id", screenID}, {"name", "x"}}})
                                             << "\"manualScreens[0].index\" is missing";
        QTest::newRow("identity with NUL") << "projectID" << QJsonValue(QString("ABC") + QChar(0) + "x")
                                           << "\"projectID\" holds a control character";
        QTest::newRow("device with a line break") << "devices" << QJsonValue(QJsonArray{"A\nB"})
                                                  << "\"devices[0]\" holds a control character";
        QTest::newRow("id not a UUID") << "manualScreens" << QJsonValue(QJsonArray{QJsonObject{{"id", "M1"}, {"index", 1}, {"name", "x"}}})
                                       << "\"manualScreens[0].id\" should be a UUID";
    }

    void decoding()
    {
        QFETCH(QString, key);
        QFETCH(QJsonValue, value);
        QFETCH(QString, error);
        QJsonObject document = key == "operation" ? withScreenOperation(value) : minimalDocument();
        if (value.isUndefined())
            document.remove(key);
        else if (key != "operation")
            document.insert(key, value);
        const QString message = decodeError(bytes(document));
        QVERIFY2(message.contains(error) && message.isEmpty() == error.isEmpty(), qPrintable(message));
    }

    void acceptsUnknownKeysAndOptionalGaps()
    {
        QJsonObject document = minimalDocument();
        document.insert("futureSetting", QJsonObject{{"a", 1}});
        document.insert("manualScreens", QJsonArray{QJsonObject{{"id", screenID.toLower()}, {"index", 1}, {"name", "x"}, {"extra", true}}});
        const ScreenshotProject p = ProjectCoding::decode(bytes(document));
        QVERIFY(!p.manualCaptureIndex);
        QCOMPARE(p.manualScreens->first().filename, std::nullopt);
        QCOMPARE(p.manualScreens->first().id, screenID); // written back in upper case
    }

    void identityTexts_data()
    {
        QTest::addColumn<OperationDraft>("operation");
        QTest::addColumn<QString>("identity");
        QTest::newRow("tap") << OperationDraft::tap(120, 640) << "tap-120-640";
        QTest::newRow("swipe") << OperationDraft::swipe(1, 2, -3, 4, 0.35) << "swipe-1-2--3-4-0.35";
        QTest::newRow("type") << OperationDraft::type("hi there") << "type-hi there";
        QTest::newRow("wait whole") << OperationDraft::wait(2) << "wait-2.0";
        QTest::newRow("wait tiny") << OperationDraft::wait(0.00005) << "wait-5e-05";
        // Reals print in the shortest form that reads back exactly.
        QTest::newRow("wait 0.15") << OperationDraft::wait(0.15) << "wait-0.15";
        QTest::newRow("wait 60") << OperationDraft::wait(60) << "wait-60.0";
        QTest::newRow("wait 0.0001") << OperationDraft::wait(0.0001) << "wait-0.0001";
        QTest::newRow("wait sum") << OperationDraft::wait(0.1 + 0.2) << "wait-0.30000000000000004";
        QTest::newRow("wait huge") << OperationDraft::wait(1e16) << "wait-1e+16";
        QTest::newRow("swipe negative") << OperationDraft::swipe(0, 0, 0, 0, -3) << "swipe-0-0-0-0--3.0";
    }

    void identityTexts()
    {
        QFETCH(OperationDraft, operation);
        QFETCH(QString, identity);
        QCOMPARE(operation.identity(), identity);
    }
};

VANTREL_TEST(ProjectDocumentTest);
#include "ProjectDocumentTest.moc"
