// vantrel apps / select-app / set-app / open-app: which app the project is
// about, found on the attached simulator or read from an .app bundle.

#include "Command.h"

#include "model/LanguageCatalog.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

void printApps(CommandContext &c, bool json)
{
    const QString selected = c.model.project().bundleId;
    if (json) {
        QJsonArray array;
        for (const InstalledSimulatorApp &app : c.model.installedApps())
            array.append(QJsonObject{{QStringLiteral("name"), app.name},
                                     {QStringLiteral("bundleId"), app.bundleId},
                                     {QStringLiteral("selected"), app.bundleId == selected}});
        c.printJson(array);
        return;
    }
    if (c.model.installedApps().isEmpty()) {
        const QString device = c.model.project().devices.value(0);
        c.out << "No user apps are installed on " << c.model.displayNameForDeviceID(device) << ".\n";
        return;
    }
    qsizetype width = 0;
    for (const InstalledSimulatorApp &app : c.model.installedApps())
        width = std::max(width, app.name.size());
    for (const InstalledSimulatorApp &app : c.model.installedApps())
        c.out << (app.bundleId == selected ? "* " : "  ") << app.name.leftJustified(width) << "  " << app.bundleId << "\n";
}

int runApps(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("Usage: vantrel apps [--json]"));
    c.model.refreshInstalledApps();
    if (c.model.lastError())
        return 1;
    printApps(c, json);
    return 0;
}

int runSelectApp(CommandContext &c)
{
    if (c.arguments.size() != 1)
        return c.usageError(QStringLiteral("Usage: vantrel select-app BUNDLE_ID"));
    const QString bundleId = c.arguments.first();
    c.model.refreshInstalledApps();
    if (c.model.lastError())
        return 1;
    for (const InstalledSimulatorApp &app : c.model.installedApps()) {
        if (app.bundleId == bundleId) {
            c.model.selectInstalledApp(app);
            c.out << "Selected " << app.name << " (" << app.bundleId << ").\n";
            return 0;
        }
    }
    c.model.setLastError(QStringLiteral("No user app with the bundle ID %1 is installed on %2. Run 'vantrel apps' "
                                        "to see the installed apps.")
                             .arg(bundleId, c.model.displayNameForDeviceID(c.model.project().devices.value(0))));
    return 1;
}

int runSetApp(CommandContext &c)
{
    if (c.arguments.size() != 1)
        return c.usageError(QStringLiteral("Usage: vantrel set-app PATH.app"));
    c.model.setAppBundle(c.arguments.first());
    if (c.model.lastError())
        return 1;
    const ScreenshotProject &p = c.model.project();
    c.out << "App:             " << p.appName << " (" << p.bundleId << ")\n"
          << "Bundle:          " << p.appPath << "\n"
          << "Simulator build: " << (p.isSimulatorBuild ? "yes" : "no") << "\n"
          << "Languages:       " << p.languages.join(QStringLiteral(", ")) << "\n";
    return 0;
}

int runOpenApp(CommandContext &c)
{
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("Usage: vantrel open-app"));
    c.model.openTargetApp();
    if (c.model.lastError())
        return 1;
    const ScreenshotProject &p = c.model.project();
    const QString language = p.languages.value(0, QStringLiteral("en-US"));
    c.out << "Opened " << (p.appName.isEmpty() ? p.bundleId : p.appName) << " on "
          << c.model.displayNameForDeviceID(p.devices.value(0)) << " in " << LanguageCatalog::label(language) << ".\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("apps"), QStringLiteral("apps [--json]"),
                 QStringLiteral("Detects the user apps installed on the attached simulator and lists them,\n"
                                "marking the project's app with *. When the project has no app yet and\n"
                                "exactly one user app is installed, that app is selected."),
                 runApps, false});

VANTREL_COMMAND({QStringLiteral("select-app"), QStringLiteral("select-app BUNDLE_ID"),
                 QStringLiteral("Makes the installed app with this bundle ID the project's app."), runSelectApp,
                 false});

VANTREL_COMMAND({QStringLiteral("set-app"), QStringLiteral("set-app PATH.app"),
                 QStringLiteral("Makes a simulator .app bundle on disk the project's app: its name and bundle\n"
                                "ID come from its Info.plist, and its localizations become the project's\n"
                                "languages. Choosing a different app starts a new flow."),
                 runSetApp, false});

VANTREL_COMMAND({QStringLiteral("open-app"), QStringLiteral("open-app"),
                 QStringLiteral("Launches the project's app on the attached simulator in the project's first\n"
                                "language, then refreshes the preview."),
                 runOpenApp, false});
