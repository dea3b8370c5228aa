// vantrel status: what the current project is and where its files are.

#include "Command.h"

#include "model/LanguageCatalog.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QJsonArray languagesJson(const QStringList &codes)
{
    QJsonArray array;
    for (const QString &code : codes)
        array.append(QJsonObject{{QStringLiteral("code"), code}, {QStringLiteral("label"), LanguageCatalog::label(code)}});
    return array;
}

int runStatus(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("status takes no arguments besides --json."));
    const ScreenshotProject &p = c.model.project;
    if (json) {
        c.printJson(QJsonObject{
            {QStringLiteral("projectID"), p.projectID.value_or(QString())},
            {QStringLiteral("displayName"), AppModel::displayName(p)},
            {QStringLiteral("appName"), p.appName},
            {QStringLiteral("bundleId"), p.bundleId},
            {QStringLiteral("languages"), languagesJson(p.languages)},
            {QStringLiteral("checkpointCount"), p.screens.size()},
            {QStringLiteral("outputDirectory"), p.outputDirectory},
            {QStringLiteral("workspaceDirectory"), c.model.workspaceDirectory()},
        });
        return 0;
    }
    const auto orNone = [](const QString &text) { return text.isEmpty() ? QStringLiteral("(none)") : text; };
    QStringList labels;
    for (const QString &code : p.languages)
        labels.append(QStringLiteral("%1 (%2)").arg(LanguageCatalog::label(code), code));
    c.out << "Project:     " << AppModel::displayName(p) << "\n"
          << "App:         " << orNone(p.appName) << "\n"
          << "Bundle ID:   " << orNone(p.bundleId) << "\n"
          << "Languages:   " << (labels.isEmpty() ? QStringLiteral("(none)") : labels.join(QStringLiteral(", "))) << "\n"
          << "Checkpoints: " << p.screens.size() << "\n"
          << "Output:      " << p.outputDirectory << "\n"
          << "Workspace:   " << c.model.workspaceDirectory() << "\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("status"), QStringLiteral("status [--json]"),
                 QStringLiteral("Shows the current project: its name, app, languages, checkpoints,\n"
                                "output folder and workspace folder."),
                 runStatus});
