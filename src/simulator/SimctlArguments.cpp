#include "SimctlArguments.h"

namespace SimctlArguments {

QStringList languageLaunchArguments(const QString &language)
{
    return {QStringLiteral("-AppleLanguages"), QLatin1Char('(') + language + QLatin1Char(')'),
            QStringLiteral("-AppleLocale"), QString(language).replace(QLatin1Char('-'), QLatin1Char('_'))};
}

QStringList statusBarOverride(const QString &device)
{
    return {QStringLiteral("simctl"),        QStringLiteral("status_bar"),   device,
            QStringLiteral("override"),      QStringLiteral("--time"),       QStringLiteral("9:41"),
            QStringLiteral("--batteryState"), QStringLiteral("charged"),     QStringLiteral("--batteryLevel"),
            QStringLiteral("100"),           QStringLiteral("--wifiMode"),   QStringLiteral("active"),
            QStringLiteral("--wifiBars"),    QStringLiteral("3")};
}

QStringList statusBarClear(const QString &device)
{
    return {QStringLiteral("simctl"), QStringLiteral("status_bar"), device, QStringLiteral("clear")};
}

} // namespace SimctlArguments
