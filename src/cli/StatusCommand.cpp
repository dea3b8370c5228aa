// vantrel status: what the current project is and where its files are.

#include "Command.h"

#include "model/LanguageCatalog.h"
#include "simulator/DeviceLabels.h"

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

QJsonArray preflightJson(const QList<ProductPreflightCheck> &checks)
{
    QJsonArray array;
    for (const ProductPreflightCheck &check : checks)
        array.append(QJsonObject{{QStringLiteral("title"), check.title},
                                 {QStringLiteral("detail"), check.detail},
                                 {QStringLiteral("isReady"), check.isReady}});
    return array;
}

// "iPhone 15 (UDID), Booted", or "(none)" before anything was attached.
QString simulatorText(const QString &udid, const QString &name, const QString &state)
{
    return udid.isEmpty() ? QStringLiteral("(none)") : DeviceLabels::describe(name, udid, state);
}

int runStatus(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("status takes no arguments besides --json."));
    const ScreenshotProject &p = c.model.project();
    const QString udid = c.model.attachedDeviceID().value_or(QString());
    const QString deviceName = udid.isEmpty() ? QString() : c.model.displayNameForDeviceID(udid);
    const QString deviceState = c.model.deviceState(udid);
    const QList<ProductPreflightCheck> checks = c.model.preflightChecks();
    if (json) {
        c.printJson(QJsonObject{
            {QStringLiteral("projectID"), p.projectID.value_or(QString())},
            {QStringLiteral("displayName"), AppModel::displayName(p)},
            {QStringLiteral("appName"), p.appName},
            {QStringLiteral("bundleId"), p.bundleId},
            {QStringLiteral("simulator"), QJsonObject{{QStringLiteral("udid"), udid},
                                                      {QStringLiteral("name"), deviceName},
                                                      {QStringLiteral("state"), deviceState}}},
            {QStringLiteral("languages"), languagesJson(p.languages)},
            {QStringLiteral("checkpointCount"), p.screens.size()},
            {QStringLiteral("outputDirectory"), p.outputDirectory},
            {QStringLiteral("workspaceDirectory"), c.model.workspaceDirectory()},
            {QStringLiteral("preflight"), preflightJson(checks)},
            {QStringLiteral("readiness"), c.model.runReadinessMessage()},
            {QStringLiteral("notes"), QJsonArray::fromStringList(c.model.recordedDeviceNotes())},
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
          << "Simulator:   " << simulatorText(udid, deviceName, deviceState) << "\n"
          << "Languages:   " << (labels.isEmpty() ? QStringLiteral("(none)") : labels.join(QStringLiteral(", "))) << "\n"
          << "Checkpoints: " << p.screens.size() << "\n"
          << "Output:      " << p.outputDirectory << "\n"
          << "Workspace:   " << c.model.workspaceDirectory() << "\n"
          << "\nPreflight:\n";
    for (const ProductPreflightCheck &check : checks)
        c.out << "  [" << (check.isReady ? "x" : " ") << "] " << check.title << ": " << check.detail << "\n";
    c.out << "\n" << c.model.runReadinessMessage() << "\n";
    for (const QString &note : c.model.recordedDeviceNotes())
        c.out << note << "\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("status"), QStringLiteral("status [--json]"),
                 QStringLiteral("Shows the current project: its name, app, attached simulator, languages,\n"
                                "checkpoints, output folder and workspace folder, then the preflight checks\n"
                                "and whether the project is ready to generate."),
                 runStatus});
