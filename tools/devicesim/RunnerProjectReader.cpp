#include "RunnerProjectReader.h"

#include "SwiftStringLiteral.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

int RunnerProject::lineContaining(const QString &needle) const
{
    for (int i = 0; i < sourceLines.size(); ++i)
        if (sourceLines[i].contains(needle))
            return i + 1;
    return 1;
}

namespace RunnerProjectReader {

namespace {

// A position in one source line, for error messages.
struct LineCursor
{
    const QString &path;
    int lineNumber;
    const QString &text;
    qsizetype at = 0;

    [[noreturn]] void fail(qsizetype position, const QString &message) const
    {
        throw BuildErrors{{QStringLiteral("%1:%2:%3: error: %4").arg(path).arg(lineNumber).arg(position + 1).arg(message)}};
    }

    void skipBlanks()
    {
        while (at < text.size() && text[at].isSpace())
            ++at;
    }

    void expect(const QString &token)
    {
        skipBlanks();
        if (!text.mid(at).startsWith(token))
            fail(at, QStringLiteral("expected '%1'").arg(token.trimmed()));
        at += token.size();
    }

    QString literal()
    {
        skipBlanks();
        const auto result = SwiftStringLiteral::parse(text, at);
        if (const auto *error = std::get_if<SwiftStringLiteral::Error>(&result))
            fail(error->position, error->message);
        const auto &parsed = std::get<SwiftStringLiteral::Parsed>(result);
        at = parsed.end;
        return parsed.value;
    }

    double number()
    {
        static const QRegularExpression pattern(QStringLiteral("^-?[0-9]+(\\.[0-9]+)?([eE][-+]?[0-9]+)?"));
        skipBlanks();
        const QRegularExpressionMatch m = pattern.match(QStringView(text).mid(at));
        if (!m.hasMatch())
            fail(at, QStringLiteral("expected expression in argument list"));
        at += m.capturedLength();
        return m.captured().toDouble();
    }

    void expectEnd(const QString &allowedTrailer)
    {
        skipBlanks();
        if (text.mid(at).startsWith(allowedTrailer))
            at += allowedTrailer.size();
        skipBlanks();
        if (at < text.size())
            fail(at, QStringLiteral("expected ',' separator"));
    }
};

ReplayStep stepFrom(LineCursor &c)
{
    ReplayStep step;
    step.line = c.lineNumber;
    c.expect(QStringLiteral("Step(kind:"));
    step.kind = c.literal();
    c.expect(QStringLiteral(", x:"));
    step.x = c.number();
    c.expect(QStringLiteral(", y:"));
    step.y = c.number();
    c.expect(QStringLiteral(", endX:"));
    step.endX = c.number();
    c.expect(QStringLiteral(", endY:"));
    step.endY = c.number();
    c.expect(QStringLiteral(", duration:"));
    step.duration = c.number();
    c.expect(QStringLiteral(", text:"));
    step.text = c.literal();
    c.expect(QStringLiteral(", outputPath:"));
    step.outputPath = c.literal();
    c.expect(QStringLiteral(")"));
    c.expectEnd(QStringLiteral(","));
    return step;
}

QString missingInput(const QString &path, const QString &target)
{
    return QStringLiteral("error: Build input file cannot be found: '%1'. Did you forget to declare this file as an "
                          "output of a script phase or custom build rule which produces it? (in target '%2' from "
                          "project 'AutomationRunner')")
        .arg(path, target);
}

// The literal after `prefix` on a line that begins (after blanks) with it.
QString literalAfter(const RunnerProject &p, int index, const QString &prefix)
{
    LineCursor c{p.sourcePath, index + 1, p.sourceLines[index]};
    c.expect(prefix);
    return c.literal();
}

void readDeclarations(RunnerProject &p)
{
    bool inSteps = false;
    for (int i = 0; i < p.sourceLines.size(); ++i) {
        const QString line = p.sourceLines[i].trimmed();
        if (inSteps) {
            if (line == QLatin1String("]")) {
                inSteps = false;
            } else if (!line.isEmpty()) {
                LineCursor c{p.sourcePath, i + 1, p.sourceLines[i]};
                p.steps.append(stepFrom(c));
            }
        } else if (line.startsWith(QLatin1String("let app = XCUIApplication(bundleIdentifier:"))) {
            p.bundleIdentifier = literalAfter(p, i, QStringLiteral("let app = XCUIApplication(bundleIdentifier:"));
            p.declaresApp = true;
        } else if (line.startsWith(QLatin1String("let outputDirectoryFilePath ="))) {
            p.outputDirectoryFilePath = literalAfter(p, i, QStringLiteral("let outputDirectoryFilePath ="));
        } else if (line.startsWith(QLatin1String("let progressFilePath = ProcessInfo.processInfo.environment["))) {
            p.progressKey = literalAfter(p, i, QStringLiteral("let progressFilePath = ProcessInfo.processInfo.environment["));
        } else if (line.startsWith(QLatin1String("let steps: [Step] = ["))) {
            inSteps = true;
        } else if (line.contains(QLatin1String("func testReplaySteps("))) {
            p.hasTestMethod = true;
        }
    }
}

// The other environment look-up of the source is the output directory's.
void readOutputDirectoryKey(RunnerProject &p)
{
    static const QRegularExpression lookup(QStringLiteral("environment\\[\"([^\"\\\\]+)\"\\]"));
    for (const QString &line : p.sourceLines) {
        const QRegularExpressionMatch m = lookup.match(line);
        if (m.hasMatch() && m.captured(1) != p.progressKey) {
            p.outputDirectoryKey = m.captured(1);
            return;
        }
    }
}

} // namespace

RunnerProject read(const QString &projectPath)
{
    RunnerProject p;
    p.root = QFileInfo(projectPath).absolutePath();
    p.sourcePath = QDir(p.root).filePath(QStringLiteral("AutomationUITests/AutomationUITests.swift"));
    const QString hostSource = QDir(p.root).filePath(QStringLiteral("AutomationHost/AutomationHostApp.swift"));
    QStringList missing;
    if (!QFile::exists(hostSource))
        missing.append(missingInput(hostSource, QStringLiteral("AutomationHost")));
    QFile source(p.sourcePath);
    if (!source.open(QIODevice::ReadOnly))
        missing.append(missingInput(p.sourcePath, QStringLiteral("AutomationUITests")));
    if (!missing.isEmpty())
        throw BuildErrors{missing};

    p.sourceLines = QString::fromUtf8(source.readAll()).split(QLatin1Char('\n'));
    readDeclarations(p);
    readOutputDirectoryKey(p);
    if (!p.declaresApp)
        throw BuildErrors{{QStringLiteral("%1:1:1: error: cannot find 'app' in scope").arg(p.sourcePath)}};
    return p;
}

} // namespace RunnerProjectReader
