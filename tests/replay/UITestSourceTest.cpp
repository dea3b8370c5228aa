#include "TestSupport.h"
#include "replay/XCUITestReplayInternal.h"

#include <QTest>

using Kind = XCTestReplayStep::Kind;

namespace {

QStringList stepLines(const QString &source)
{
    QStringList lines;
    for (const QString &line : source.split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String("        Step(")))
            lines.append(line);
    return lines;
}

QString lineStartingWith(const QString &source, const QString &prefix)
{
    for (const QString &line : source.split(QLatin1Char('\n')))
        if (line.startsWith(prefix))
            return line;
    return {};
}

} // namespace

class UITestSourceTest : public QObject
{
    Q_OBJECT

private slots:
    void quotesText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("literal");
        QTest::newRow("empty") << QString() << QStringLiteral("\"\"");
        QTest::newRow("quote, backslash, line feed")
            << QStringLiteral("say \"hi\"\\\nbye") << QStringLiteral("\"say \\\"hi\\\"\\\\\\nbye\"");
        QTest::newRow("return, tab, backspace")
            << QStringLiteral("a\rb\tc\bd") << QStringLiteral("\"a\\rb\\tc\\bd\"");
        QTest::newRow("other control characters")
            << QStringLiteral("\u0001x\u001f\u0000") << QStringLiteral("\"\\u{1}x\\u{1f}\\u{0}\"");
        QTest::newRow("delete and non-ASCII unchanged")
            << QStringLiteral("\u007f caf\u00e9 \U0001F600") << QStringLiteral("\"\u007f caf\u00e9 \U0001F600\"");
    }
    void quotesText()
    {
        QFETCH(QString, text);
        QFETCH(QString, literal);
        QCOMPARE(XCUITestReplay::sourceStringLiteral(text), literal);
    }

    void writesOneLinePerStepWithShortestNumbers()
    {
        const QList<XCTestReplayStep> steps{
            {Kind::tap, 120, 45, 0, 0, 0.35, {}, {}},
            {Kind::swipe, -3, 7, 200, -7, 5e-05, {}, {}},
            {Kind::type, 0, 0, 0, 0, 0, QStringLiteral("a\"b"), {}},
            {Kind::screenshot, 0, 0, 0, 0, 0, {}, QStringLiteral("en/01 Home.png")},
        };
        const QStringList lines = stepLines(XCUITestReplay::uiTestSource(QStringLiteral("/runner"), QStringLiteral("com.example"), steps));
        const QStringList expected{
            QStringLiteral("        Step(kind: \"tap\", x: 120.0, y: 45.0, endX: 0.0, endY: 0.0, duration: 0.35, text: \"\", outputPath: \"\"),"),
            QStringLiteral("        Step(kind: \"swipe\", x: -3.0, y: 7.0, endX: 200.0, endY: -7.0, duration: 5e-05, text: \"\", outputPath: \"\"),"),
            QStringLiteral("        Step(kind: \"type\", x: 0.0, y: 0.0, endX: 0.0, endY: 0.0, duration: 0.0, text: \"a\\\"b\", outputPath: \"\"),"),
            QStringLiteral("        Step(kind: \"screenshot\", x: 0.0, y: 0.0, endX: 0.0, endY: 0.0, duration: 0.0, text: \"\", outputPath: \"en/01 Home.png\")"),
        };
        QCOMPARE(lines, expected);
    }

    // The arguments travel as a JSON array inside one string literal, so an
    // argument with quotes, spaces or a line break arrives as it is. (A
    // single step, so also no trailing comma after the only element.)
    void launchStepCarriesItsArgumentsExactly()
    {
        const QStringList arguments{QStringLiteral("-AppleLanguages"), QStringLiteral("(de-DE)"),
                                    QStringLiteral("say \"hi\"\nnow"), QString()};
        const XCTestReplayStep launch = XCTestReplayStep::launch(arguments, 1.5);
        QCOMPARE(launch.launchArguments(), arguments);
        QCOMPARE(XCTestReplayStep::kindFromRawValue(QStringLiteral("launch")), Kind::launch);
        const QStringList lines = stepLines(XCUITestReplay::uiTestSource(QStringLiteral("/runner"), QStringLiteral("b"), {launch}));
        QCOMPARE(lines, QStringList{QStringLiteral(
                            "        Step(kind: \"launch\", x: 0.0, y: 0.0, endX: 0.0, endY: 0.0, duration: 1.5, text: "
                            "\"[\\\"-AppleLanguages\\\",\\\"(de-DE)\\\",\\\"say \\\\\\\"hi\\\\\\\"\\\\nnow\\\",\\\"\\\"]\", "
                            "outputPath: \"\")")});
    }

    void splicesBundleIdentifierMarkerAndEnvironmentKeys()
    {
        const QString source = XCUITestReplay::uiTestSource(
            QStringLiteral("/work space/XCUITestReplayRunner"), QStringLiteral("  com.example.App \""),
            {{Kind::wait, 0, 0, 0, 0, 1, {}, {}}});
        QCOMPARE(lineStartingWith(source, QStringLiteral("    let app = ")),
                 QStringLiteral("    let app = XCUIApplication(bundleIdentifier: \"  com.example.App \\\"\")"));
        QCOMPARE(lineStartingWith(source, QStringLiteral("    let outputDirectoryFilePath = ")),
                 QStringLiteral("    let outputDirectoryFilePath = \"/work space/XCUITestReplayRunner/current-output-directory.txt\""));
        QCOMPARE(lineStartingWith(source, QStringLiteral("    let progressFilePath = ")),
                 QStringLiteral("    let progressFilePath = ProcessInfo.processInfo.environment[\"QUILLMARK_PROGRESS_FILE\"] ?? \"\""));
        QCOMPARE(source.count(QStringLiteral("environment[\"QUILLMARK_OUTPUT_DIR\"]")), 1);
        QVERIFY(!source.contains(QLatin1String("@OUTPUT_DIRECTORY_KEY@")));
        QVERIFY(source.startsWith(QLatin1String("import XCTest\n")));
    }

    void markerPathIsAbsoluteForARelativeRoot()
    {
        const QString line = lineStartingWith(
            XCUITestReplay::uiTestSource(QStringLiteral("relative/root"), QStringLiteral("b"),
                                         {{Kind::wait, 0, 0, 0, 0, 1, {}, {}}}),
            QStringLiteral("    let outputDirectoryFilePath = "));
        QVERIFY(line.contains(QLatin1String("= \"/")));
        QVERIFY(line.endsWith(QLatin1String("relative/root/current-output-directory.txt\"")));
    }
};

VANTREL_TEST(UITestSourceTest);
#include "UITestSourceTest.moc"
