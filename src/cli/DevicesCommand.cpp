// vantrel devices / attach: the simulators the developer tools know, and
// attaching the project to the booted one.

#include "Command.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>

namespace {

void printDevices(CommandContext &c, bool json)
{
    const QList<SimulatorDevice> &devices = c.model.availableDevices();
    const QString attached = c.model.attachedDeviceID().value_or(QString());
    if (json) {
        QJsonArray array;
        for (const SimulatorDevice &d : devices)
            array.append(QJsonObject{{QStringLiteral("name"), d.name},
                                     {QStringLiteral("udid"), d.udid},
                                     {QStringLiteral("runtime"), d.runtime},
                                     {QStringLiteral("state"), d.state},
                                     {QStringLiteral("attached"), d.udid == attached}});
        c.printJson(array);
        return;
    }
    if (devices.isEmpty()) {
        c.out << "No iOS or iPadOS simulators are available.\n";
        return;
    }
    qsizetype nameWidth = 0;
    qsizetype runtimeWidth = 0;
    for (const SimulatorDevice &d : devices) {
        nameWidth = std::max(nameWidth, d.name.size());
        runtimeWidth = std::max(runtimeWidth, d.runtime.size());
    }
    for (const SimulatorDevice &d : devices)
        c.out << (d.udid == attached ? "* " : "  ") << d.name.leftJustified(nameWidth) << "  "
              << d.runtime.leftJustified(runtimeWidth) << "  " << d.state.leftJustified(9) << " " << d.udid << "\n";
    if (!attached.isEmpty())
        c.out << "\n* attached to this project\n";
}

int runDevices(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("Usage: vantrel devices [--json]"));
    c.model.refreshDevices();
    if (c.model.lastError())
        return 1;
    printDevices(c, json);
    return 0;
}

int runAttach(CommandContext &c)
{
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("Usage: vantrel attach"));
    c.model.attachToBootedSimulator();
    if (c.model.lastError())
        return 1;
    const QString udid = c.model.attachedDeviceID().value_or(QString());
    c.out << "Attached " << c.model.displayNameForDeviceID(udid) << " (" << udid << ").\n";
    c.out.flush();

    // The desktop application detects the apps and takes a preview right
    // after attaching; here that follow-up runs before the command ends. Its
    // failures do not undo the attach.
    QCoreApplication::processEvents();
    if (c.model.lastError()) {
        c.err << "note: " << *c.model.lastError() << "\n";
        c.model.clearLastError();
    }
    if (!c.model.project().bundleId.isEmpty())
        c.out << "App: " << c.model.project().appName << " (" << c.model.project().bundleId << ")\n";
    else if (!c.model.installedApps().isEmpty())
        c.out << c.model.installedApps().size()
              << " user apps are installed; choose one with 'vantrel select-app BUNDLE_ID'.\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("devices"), QStringLiteral("devices [--json]"),
                 QStringLiteral("Lists the available iOS and iPadOS simulators (name, runtime, state, UDID),\n"
                                "marking the one attached to the project with *."),
                 runDevices, false});

VANTREL_COMMAND({QStringLiteral("attach"), QStringLiteral("attach"),
                 QStringLiteral("Attaches the project to the booted simulator, then detects its installed\n"
                                "apps (selecting the only user app) and takes a preview. When several\n"
                                "simulators are booted, the one the project already uses is chosen."),
                 runAttach, false});
