#include "StandInWorld.h"

#include "TestSupport.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

StandInWorld::StandInWorld()
{
    const Result shims = run(QStringLiteral("devicesim"), {QStringLiteral("shims"), path(QStringLiteral("bin"))});
    if (shims.exitCode != 0)
        qFatal("devicesim shims failed: %s", qPrintable(shims.err));
}

static QProcessEnvironment standInEnvironment(const QString &home, const QHash<QString, QString> &extra)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DEVICESIM_HOME"), home);
    env.insert(QStringLiteral("DEVICESIM_TIME_SCALE"), QStringLiteral("0"));
    env.remove(QStringLiteral("QUILLMARK_OUTPUT_DIR"));
    env.remove(QStringLiteral("QUILLMARK_PROGRESS_FILE"));
    for (auto it = extra.begin(); it != extra.end(); ++it)
        env.insert(it.key(), it.value());
    return env;
}

StandInWorld::Result StandInWorld::run(const QString &tool, const QStringList &arguments,
                                       const QHash<QString, QString> &environment, const QString &workingDirectory) const
{
    QProcess process;
    process.setProcessEnvironment(standInEnvironment(path(QStringLiteral("home")), environment));
    if (!workingDirectory.isEmpty())
        process.setWorkingDirectory(workingDirectory);
    process.start(tool == QLatin1String("devicesim") ? TestSupport::devicesimBinary() : path(QStringLiteral("bin/") + tool),
                  arguments);
    process.waitForFinished(60000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

void StandInWorld::launchDemo(const QString &language, const QString &udid) const
{
    const Result r = run(QStringLiteral("xcrun"),
                         {QStringLiteral("simctl"), QStringLiteral("launch"), QStringLiteral("--terminate-running-process"),
                          udid, demoApp, QStringLiteral("-AppleLanguages"), QStringLiteral("(%1)").arg(language),
                          QStringLiteral("-AppleLocale"), QString(language).replace(QLatin1Char('-'), QLatin1Char('_'))});
    QVERIFY2(r.exitCode == 0, qPrintable(r.err));
}

static QString sourceLiteral(const QString &text)
{
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '\\': out += QStringLiteral("\\\\"); break;
        case '"': out += QStringLiteral("\\\""); break;
        case '\n': out += QStringLiteral("\\n"); break;
        case '\r': out += QStringLiteral("\\r"); break;
        case '\t': out += QStringLiteral("\\t"); break;
        case '\b': out += QStringLiteral("\\b"); break;
        default:
            out += c.unicode() < 0x20 ? QStringLiteral("\\u{%1}").arg(c.unicode(), 0, 16) : QString(c);
        }
    }
    return out + QLatin1Char('"');
}

static QString number(double value)
{
    QString text = QString::number(value, 'g', 17);
    return text.contains(QLatin1Char('.')) || text.contains(QLatin1Char('e')) ? text : text + QStringLiteral(".0");
}

QString StandInWorld::writeRunnerProject(const QList<StandInStep> &steps) const
{
    const QString root = path(QStringLiteral("workspace/XCUITestReplayRunner"));
    QStringList lines;
    for (const StandInStep &s : steps)
        lines.append(QStringLiteral("        Step(kind: %1, x: %2, y: %3, endX: %4, endY: %5, duration: %6, text: %7, outputPath: %8)")
                         .arg(sourceLiteral(s.kind), number(s.x), number(s.y), number(s.endX), number(s.endY),
                              number(s.duration), sourceLiteral(s.text), sourceLiteral(s.outputPath)));
    const QString source = QStringLiteral(
        "import XCTest\n\nfinal class AutomationUITests: XCTestCase {\n"
        "    struct Step { let kind: String; let x, y, endX, endY: Double; let duration: TimeInterval; let text, outputPath: String }\n"
        "    let app = XCUIApplication(bundleIdentifier: %1)\n"
        "    let outputDirectoryFilePath = %2\n"
        "    let progressFilePath = ProcessInfo.processInfo.environment[\"QUILLMARK_PROGRESS_FILE\"] ?? \"\"\n"
        "    let steps: [Step] = [\n%3\n    ]\n\n"
        "    func testReplaySteps() throws {\n"
        "        // replays the steps; screenshots go to ProcessInfo.processInfo.environment[\"QUILLMARK_OUTPUT_DIR\"]\n"
        "        XCTAssertTrue(app.wait(for: .runningForeground, timeout: 8), \"Target app did not become foreground: \\(app)\")\n"
        "    }\n}\n")
                               .arg(sourceLiteral(demoApp), sourceLiteral(root + QStringLiteral("/current-output-directory.txt")),
                                    lines.join(QStringLiteral(",\n")));
    TestSupport::writeFile(root + QStringLiteral("/AutomationUITests/AutomationUITests.swift"), source.toUtf8());
    TestSupport::writeFile(root + QStringLiteral("/AutomationHost/AutomationHostApp.swift"),
                           "import SwiftUI\n@main struct AutomationHostApp: App { var body: some Scene { WindowGroup { Color.clear } } }\n");
    TestSupport::writeFile(root + QStringLiteral("/AutomationRunner.xcodeproj/project.pbxproj"),
                           "// !$*UTF8*$!\n{\n\tarchiveVersion = 1;\n\tobjectVersion = 56;\n\trootObject = A00000000000000000000006;\n}\n");
    TestSupport::writeFile(root + QStringLiteral("/AutomationRunner.xcodeproj/xcshareddata/xcschemes/AutomationHost.xcscheme"),
                           "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Scheme LastUpgradeVersion = \"1600\" version = \"1.7\">\n"
                           "   <TestAction buildConfiguration = \"Debug\"><Testables><TestableReference skipped = \"NO\">"
                           "<BuildableReference BuildableName = \"AutomationUITests.xctest\"/></TestableReference></Testables>"
                           "</TestAction>\n</Scheme>\n");
    return root;
}

QStringList StandInWorld::xcodebuildArguments(const QString &root, const QString &udid) const
{
    return {QStringLiteral("test"), QStringLiteral("-project"), root + QStringLiteral("/AutomationRunner.xcodeproj"),
            QStringLiteral("-scheme"), QStringLiteral("AutomationHost"), QStringLiteral("-destination"),
            QStringLiteral("id=") + udid, QStringLiteral("-derivedDataPath"), root + QStringLiteral("/DerivedData"),
            QStringLiteral("-quiet"), QStringLiteral("CODE_SIGNING_ALLOWED=NO")};
}
