#include "ConfigWriter.h"

#include "replay/RealNumberText.h"

#include <QStringList>

namespace {

template <class... Ts> struct Overloaded : Ts... { using Ts::operator()...; };
template <class... Ts> Overloaded(Ts...) -> Overloaded<Ts...>;

QString boolText(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }

QString real(double value) { return RealNumberText::shortest(value); }

// "key:" then one quoted item per line; an empty list writes the key alone.
void appendList(QStringList &lines, const QString &key, const QStringList &items, const QString &indent)
{
    lines.append(key + QLatin1Char(':'));
    for (const QString &item : items)
        lines.append(indent + QStringLiteral("- ") + ConfigWriter::quoted(item));
}

// The per-screen launch arguments: the state, then the sample name when the
// project names an argument for it.
QStringList screenLaunchArguments(const ScreenshotProject &project, const ScreenDraft &screen)
{
    QStringList arguments;
    if (!screen.state.isEmpty())
        arguments << QLatin1Char('-') + project.stateArgumentName << screen.state;
    if (!project.sampleNameArgumentName.isEmpty() && !screen.sampleName.isEmpty())
        arguments << QLatin1Char('-') + project.sampleNameArgumentName << screen.sampleName;
    return arguments;
}

void appendOperation(QStringList &lines, const OperationDraft &operation)
{
    const QString item = QStringLiteral("      - ");
    const QString field = QStringLiteral("          ");
    std::visit(Overloaded{
                   [&](const TapOperation &tap) {
                       lines << item + QStringLiteral("tap:")
                             << field + QStringLiteral("x: ") + QString::number(tap.x)
                             << field + QStringLiteral("y: ") + QString::number(tap.y);
                   },
                   [&](const SwipeOperation &swipe) {
                       lines << item + QStringLiteral("swipe:")
                             << field + QStringLiteral("startX: ") + QString::number(swipe.startX)
                             << field + QStringLiteral("startY: ") + QString::number(swipe.startY)
                             << field + QStringLiteral("endX: ") + QString::number(swipe.endX)
                             << field + QStringLiteral("endY: ") + QString::number(swipe.endY)
                             << field + QStringLiteral("duration: ") + real(swipe.duration);
                   },
                   [&](const TypeOperation &type) {
                       lines << item + QStringLiteral("type: ") + ConfigWriter::quoted(type.text);
                   },
                   [&](const WaitOperation &wait) { lines << item + QStringLiteral("wait: ") + real(wait.seconds); },
               },
               operation.value());
}

void appendScreen(QStringList &lines, const ScreenshotProject &project, const ScreenDraft &screen)
{
    lines.append(QStringLiteral("  - name: ") + ConfigWriter::quoted(screen.name));
    const QStringList arguments = screenLaunchArguments(project, screen);
    if (!arguments.isEmpty())
        appendList(lines, QStringLiteral("    launchArguments"), arguments, QStringLiteral("      "));
    lines.append(QStringLiteral("    launchWaitSeconds: ") + real(screen.launchWaitSeconds));
    lines.append(QStringLiteral("    operations:"));
    if (screen.operations.isEmpty())
        lines.append(QStringLiteral("      []"));
    for (const OperationDraft &operation : screen.operations)
        appendOperation(lines, operation);
}

} // namespace

QString ConfigWriter::quoted(const QString &text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    escaped.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QString ConfigWriter::yaml(const ScreenshotProject &project)
{
    QStringList lines;
    lines << QStringLiteral("appPath: ") + quoted(project.appPath)
          << QStringLiteral("bundleId: ") + quoted(project.bundleId)
          << QStringLiteral("outputDirectory: ") + quoted(project.outputDirectory)
          << QStringLiteral("openSimulator: ") + boolText(project.openSimulator)
          << QStringLiteral("resetAppData: ") + boolText(project.resetAppData)
          << QStringLiteral("launchWaitSeconds: ") + real(project.launchWaitSeconds);
    appendList(lines, QStringLiteral("devices"), project.devices, QStringLiteral("  "));
    appendList(lines, QStringLiteral("languages"), project.languages, QStringLiteral("  "));
    appendList(lines, QStringLiteral("launchArguments"), project.globalLaunchArguments, QStringLiteral("  "));
    // The empty project-level list is written in flow style on its own line.
    if (project.globalLaunchArguments.isEmpty())
        lines.append(QStringLiteral("  []"));
    lines.append(QStringLiteral("screens:"));
    for (const ScreenDraft &screen : project.screens)
        appendScreen(lines, project, screen);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
