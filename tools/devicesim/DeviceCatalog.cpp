#include "DeviceCatalog.h"

#include <QList>
#include <QRegularExpression>

namespace DeviceCatalog {

namespace {

const QString typePrefix = QStringLiteral("com.apple.CoreSimulator.SimDeviceType.");

QString identifierFor(const QString &name)
{
    QString id = name;
    id.remove(QLatin1Char('(')).remove(QLatin1Char(')'));
    id.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]+")), QStringLiteral("-"));
    return typePrefix + id;
}

const QList<DeviceType> &knownTypes()
{
    static const QList<DeviceType> types = {
        {QStringLiteral("iPhone 15 Pro"), {}, 1179, 2556, 3},
        {QStringLiteral("iPhone 15 Pro Max"), {}, 1290, 2796, 3},
        {QStringLiteral("iPhone 15"), {}, 1179, 2556, 3},
        {QStringLiteral("iPhone 15 Plus"), {}, 1290, 2796, 3},
        {QStringLiteral("iPhone 16 Pro"), {}, 1206, 2622, 3},
        {QStringLiteral("iPhone 16 Pro Max"), {}, 1320, 2868, 3},
        {QStringLiteral("iPhone 14"), {}, 1170, 2532, 3},
        {QStringLiteral("iPhone SE (3rd generation)"), {}, 750, 1334, 2},
        {QStringLiteral("iPad Air 11-inch (M2)"), {}, 1640, 2360, 2},
        {QStringLiteral("iPad Pro 11-inch (M4)"), {}, 1668, 2420, 2},
        {QStringLiteral("iPad (10th generation)"), {}, 1640, 2360, 2},
        {QStringLiteral("Apple Watch Series 9 (45mm)"), {}, 396, 484, 2},
        {QStringLiteral("Apple TV 4K (3rd generation)"), {}, 1920, 1080, 1},
    };
    return types;
}

} // namespace

DeviceType find(const QString &name)
{
    for (DeviceType type : knownTypes()) {
        if (type.name.compare(name, Qt::CaseInsensitive) == 0) {
            type.identifier = identifierFor(type.name);
            return type;
        }
    }
    DeviceType type;
    type.name = name;
    type.identifier = identifierFor(name);
    return type;
}

} // namespace DeviceCatalog
