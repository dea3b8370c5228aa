#include "TestSupport.h"
#include "replay/XCUITestReplayInternal.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

using Kind = XCTestReplayStep::Kind;

namespace {

const QStringList generatedFiles{
    QStringLiteral("AutomationHost/AutomationHostApp.swift"),
    QStringLiteral("AutomationUITests/AutomationUITests.swift"),
    QStringLiteral("AutomationRunner.xcodeproj/project.pbxproj"),
    QStringLiteral("AutomationRunner.xcodeproj/xcshareddata/xcschemes/AutomationHost.xcscheme"),
};

const QList<XCTestReplayStep> singleScreenshot{{Kind::screenshot, 0, 0, 0, 0, 0, {}, QStringLiteral("a.png")}};

QByteArray generated(const QString &root, const QString &file)
{
    return TestSupport::readFile(QDir(root).filePath(file));
}

// Every identifier the scheme names, in attribute order.
QStringList schemeBlueprints(const QByteArray &scheme, QString *error)
{
    QStringList blueprints;
    QXmlStreamReader xml(scheme);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("BuildableReference"))
            blueprints.append(xml.attributes().value(QLatin1String("BlueprintIdentifier")).toString());
    }
    if (xml.hasError())
        *error = xml.errorString();
    return blueprints;
}

} // namespace

class RunnerProjectTest : public QObject
{
    Q_OBJECT

private slots:
    void writesTheFourFilesAndKeepsRunState()
    {
        QTemporaryDir workspace;
        const QString root = workspace.filePath(QStringLiteral("XCUITestReplayRunner"));
        XCUITestReplay::writeRunnerProject(root, QStringLiteral("com.example.first"), singleScreenshot);
        for (const QString &file : generatedFiles)
            QVERIFY2(QFileInfo::exists(QDir(root).filePath(file)), qPrintable(file));

        TestSupport::writeFile(QDir(root).filePath(QStringLiteral("progress.log")), "a.png\n");
        TestSupport::writeFile(QDir(root).filePath(QStringLiteral("DerivedData/Build/cache")), "kept");
        TestSupport::writeFile(QDir(root).filePath(generatedFiles.at(2)), "stale");
        XCUITestReplay::writeRunnerProject(root, QStringLiteral("com.example.second"), singleScreenshot);

        QVERIFY(generated(root, generatedFiles.at(1)).contains("com.example.second"));
        QVERIFY(!generated(root, generatedFiles.at(1)).contains("com.example.first"));
        QVERIFY(generated(root, generatedFiles.at(2)).startsWith("// !$*UTF8*$!\n"));
        QCOMPARE(generated(root, QStringLiteral("progress.log")), QByteArray("a.png\n"));
        QCOMPARE(generated(root, QStringLiteral("DerivedData/Build/cache")), QByteArray("kept"));
        // Atomic writes leave no temporary files behind.
        QCOMPARE(QDir(root + QStringLiteral("/AutomationUITests")).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("AutomationUITests.swift")});
    }

    void schemeIsWellFormedAndNamesTheTwoTargets()
    {
        QTemporaryDir workspace;
        XCUITestReplay::writeRunnerProject(workspace.path(), QStringLiteral("b"), singleScreenshot);
        const QByteArray scheme = generated(workspace.path(), generatedFiles.at(3));
        QVERIFY(scheme.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Scheme"));
        QString error;
        const QStringList blueprints = schemeBlueprints(scheme, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        const QStringList host(QStringLiteral("A00000000000000000000007"));
        const QStringList tests(QStringLiteral("A00000000000000000000013"));
        // build (host, tests), test (tests), launch (host), profile (host)
        QCOMPARE(blueprints, host + tests + tests + host + host);
    }

    // A light textual check; the full parse with a real project-file parser
    // runs as its own test (replay-project-file).
    void projectFileDefinesEveryIdentifierItUses()
    {
        QTemporaryDir workspace;
        XCUITestReplay::writeRunnerProject(workspace.path(), QStringLiteral("b"), singleScreenshot);
        const QString text = QString::fromUtf8(generated(workspace.path(), generatedFiles.at(2)));
        QSet<QString> defined;
        QSet<QString> used;
        static const QRegularExpression identifier(QStringLiteral("A0{21}[0-9A-F]{2}"));
        static const QRegularExpression definition(QStringLiteral("^\\t\\t(A0{21}[0-9A-F]{2})\\b.* = \\{"),
                                                   QRegularExpression::MultilineOption);
        for (const auto &match : identifier.globalMatch(text))
            used.insert(match.captured());
        for (const auto &match : definition.globalMatch(text))
            defined.insert(match.captured(1));
        QCOMPARE(defined.size(), 30);
        QCOMPARE(used, defined);
        QVERIFY(text.contains(QLatin1String("rootObject = A00000000000000000000006 /* Project object */;")));
        QCOMPARE(text.count(QLatin1String("CODE_SIGNING_ALLOWED = NO;")), 6);
    }
};

VANTREL_TEST(RunnerProjectTest);
#include "RunnerProjectTest.moc"
