// The "Start Here" rows in workflow order: attach, permission, app,
// languages, flow. Each row is complete once its step is done.

#include "QuickStartRow.h"

#include "model/AppModel.h"

QList<QuickStartRow> AppModel::quickStartRows()
{
    const ScreenshotProject &p = m_project;
    const bool attached = !p.devices.isEmpty();
    const bool trusted = platform().isAccessibilityTrusted();
    const bool appChosen = !p.bundleId.isEmpty();
    const bool hasLanguages = !p.languages.isEmpty();
    const bool hasFlow = !p.screens.isEmpty();

    QuickStartRow attach{1, QStringLiteral("Attach Simulator"),
                         attached ? p.attachedDeviceName.value_or(QStringLiteral("Attached"))
                                  : QStringLiteral("Open your app in Simulator, then attach"),
                         attached, attached ? QStringLiteral("Reattach") : QStringLiteral("Attach"),
                         QStringLiteral("iphone"), [this] { attachToBootedSimulator(); }};
    QuickStartRow permission{2, QStringLiteral("Allow click recording"),
                             trusted ? QStringLiteral("Permission granted")
                                     : QStringLiteral("Needed to record Simulator taps and drags"),
                             trusted, trusted ? std::nullopt : std::optional(QStringLiteral("Allow")),
                             QStringLiteral("hand.tap"), {}};
    QuickStartRow app{3, QStringLiteral("Choose app"),
                      appChosen ? p.appName : QStringLiteral("Choose the app running in Simulator"), appChosen,
                      appChosen ? QStringLiteral("Change") : QStringLiteral("Choose"), QStringLiteral("app.badge"),
                      [this] { refreshInstalledApps(); }};
    QuickStartRow languages{4, QStringLiteral("Choose languages"),
                            hasLanguages ? QString::number(p.languages.size()) + QStringLiteral(" selected")
                                         : QStringLiteral("Pick App Store locales"),
                            hasLanguages, QStringLiteral("Choose"), QStringLiteral("globe"), {}};
    QuickStartRow flow{5, QStringLiteral("Record flow"),
                       hasFlow ? QString::number(p.screens.size()) + QStringLiteral(" checkpoints recorded")
                               : QStringLiteral("Capture the screens you want in App Store screenshots"),
                       hasFlow, hasFlow ? QStringLiteral("Review") : QStringLiteral("Record"),
                       QStringLiteral("record.circle"), {}};
    return {attach, permission, app, languages, flow};
}
