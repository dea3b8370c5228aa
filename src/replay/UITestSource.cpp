// The UI-test source: fixed template text around the values of one run. The
// device stand-in and people reading a failed build both read these lines,
// so their shape is fixed: one `let` per value, one `Step(...)` per line.
#include "RealNumberText.h"
#include "RunnerTemplates.h"
#include "XCUITestReplayInternal.h"

#include <QDir>

namespace XCUITestReplay {

namespace {

QString number(double value)
{
    return RealNumberText::shortest(value);
}

QString stepLine(const XCTestReplayStep &step)
{
    return QStringLiteral("        Step(kind: ") + sourceStringLiteral(XCTestReplayStep::rawValue(step.kind))
        + QStringLiteral(", x: ") + number(static_cast<double>(step.x))
        + QStringLiteral(", y: ") + number(static_cast<double>(step.y))
        + QStringLiteral(", endX: ") + number(static_cast<double>(step.endX))
        + QStringLiteral(", endY: ") + number(static_cast<double>(step.endY))
        + QStringLiteral(", duration: ") + number(step.duration)
        + QStringLiteral(", text: ") + sourceStringLiteral(step.text)
        + QStringLiteral(", outputPath: ") + sourceStringLiteral(step.outputPath) + QLatin1Char(')');
}

QString stepsArray(const QList<XCTestReplayStep> &steps)
{
    QStringList lines;
    lines.reserve(steps.size());
    for (const XCTestReplayStep &step : steps)
        lines.append(stepLine(step));
    return QStringLiteral("    let steps: [Step] = [\n") + lines.join(QStringLiteral(",\n"))
        + QStringLiteral("\n    ]\n");
}

QString body()
{
    QString text = QString::fromUtf8(RunnerTemplates::uiTestBody);
    text.replace(QLatin1String(RunnerTemplates::outputDirectoryKeyPlaceholder),
                 sourceStringLiteral(outputDirectoryEnvironmentKey));
    return text;
}

} // namespace

QString sourceStringLiteral(const QString &text)
{
    QString literal;
    literal.reserve(text.size() + 2);
    literal += QLatin1Char('"');
    // Only ASCII characters are escaped, so walking UTF-16 units copies every
    // other scalar (surrogate pairs included) unchanged.
    for (const QChar character : text) {
        switch (character.unicode()) {
        case '\\': literal += QLatin1String("\\\\"); break;
        case '"': literal += QLatin1String("\\\""); break;
        case '\n': literal += QLatin1String("\\n"); break;
        case '\r': literal += QLatin1String("\\r"); break;
        case '\t': literal += QLatin1String("\\t"); break;
        // Not an escape of the test source's language: a typed backspace makes
        // the build fail loudly rather than type something else.
        case '\b': literal += QLatin1String("\\b"); break;
        default:
            if (character.unicode() < 0x20)
                literal += QStringLiteral("\\u{%1}").arg(character.unicode(), 0, 16);
            else
                literal += character;
        }
    }
    literal += QLatin1Char('"');
    return literal;
}

QString uiTestSource(const QString &root, const QString &bundleIdentifier,
                     const QList<XCTestReplayStep> &steps)
{
    const QString markerPath = QDir(root).absoluteFilePath(QStringLiteral("current-output-directory.txt"));
    return QString::fromUtf8(RunnerTemplates::uiTestHeader)
        + QStringLiteral("    let app = XCUIApplication(bundleIdentifier: ") + sourceStringLiteral(bundleIdentifier)
        + QStringLiteral(")\n")
        + QStringLiteral("    let outputDirectoryFilePath = ") + sourceStringLiteral(markerPath) + QLatin1Char('\n')
        + QStringLiteral("    let progressFilePath = ProcessInfo.processInfo.environment[")
        + sourceStringLiteral(progressFileEnvironmentKey) + QStringLiteral("] ?? \"\"\n")
        + stepsArray(steps) + body();
}

} // namespace XCUITestReplay
