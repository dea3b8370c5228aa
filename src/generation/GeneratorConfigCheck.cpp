#include "GeneratorConfigCheck.h"

#include "model/AppError.h"
#include "simulator/AppBundleInspector.h"

#include <QFileInfo>

namespace GeneratorConfigCheck {

QList<ConfigProblem> buildProblems(const GeneratorConfig &config)
{
    const QFileInfo bundle(config.appPath);
    const ConfigPosition at = config.appPathPosition;
    if (!bundle.exists())
        return {{at, QStringLiteral("there is no .app bundle at %1").arg(config.appPath)}};
    if (!bundle.isDir() || bundle.suffix() != QLatin1String("app"))
        return {{at, QStringLiteral("%1 is not an .app bundle; choose the .app that the simulator build produced")
                         .arg(config.appPath)}};
    if (!QFileInfo(bundle.filePath() + QStringLiteral("/Info.plist")).isFile())
        return {{at, QStringLiteral("%1 has no Info.plist; choose the .app that the simulator build produced")
                         .arg(config.appPath)}};
    try {
        const QString identifier = AppBundleInspector::inspect(config.appPath).bundleIdentifier;
        if (identifier != config.bundleId)
            return {{config.bundleIdPosition, QStringLiteral("bundleId is %1, but the build at %2 is %3")
                                                  .arg(config.bundleId, config.appPath, identifier)}};
    } catch (const AppError &error) {
        return {{at, error.message()}};
    }
    return {};
}

QList<ConfigProblem> deviceProblems(const GeneratorConfig &config, const QList<SimulatorDevice> &available)
{
    QList<ConfigProblem> problems;
    for (qsizetype i = 0; i < config.devices.size(); ++i) {
        const QString &udid = config.devices.at(i);
        const bool known = std::any_of(available.begin(), available.end(),
                                       [&](const SimulatorDevice &device) { return device.udid == udid; });
        if (!known)
            problems.append({config.devicePositions.value(i),
                             QStringLiteral("unknown device %1: no available iOS simulator has this UDID "
                                            "(xcrun simctl list devices shows them)")
                                 .arg(udid)});
    }
    return problems;
}

} // namespace GeneratorConfigCheck
