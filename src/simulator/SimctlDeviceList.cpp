#include "SimctlDeviceList.h"

#include "CodePointOrder.h"
#include "model/AppError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace {

[[noreturn]] void fail(const QString &reason)
{
    throw AppError(QStringLiteral("The simulator list could not be read: %1.").arg(reason));
}

QString requiredText(const QJsonObject &object, const QString &key, const QString &where)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined())
        fail(QStringLiteral("%1 has no \"%2\"").arg(where, key));
    if (!value.isString())
        fail(QStringLiteral("\"%2\" of %1 is not text").arg(where, key));
    return value.toString();
}

// Absent and null both mean "not given"; any other type is an error.
template <class T>
std::optional<T> optionalValue(const QJsonObject &object, const QString &key, const QString &where,
                               bool (QJsonValue::*hasType)() const, T (*convert)(const QJsonValue &))
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    if (!(value.*hasType)())
        fail(QStringLiteral("\"%2\" of %1 has the wrong type").arg(where, key));
    return convert(value);
}

SimctlDevice decodeDevice(const QJsonValue &value, const QString &where)
{
    if (!value.isObject())
        fail(QStringLiteral("%1 is not an object").arg(where));
    const QJsonObject object = value.toObject();
    SimctlDevice device;
    device.name = requiredText(object, QStringLiteral("name"), where);
    device.udid = requiredText(object, QStringLiteral("udid"), where);
    device.state = optionalValue<QString>(object, QStringLiteral("state"), where, &QJsonValue::isString,
                                          [](const QJsonValue &v) { return v.toString(); });
    device.isAvailable = optionalValue<bool>(object, QStringLiteral("isAvailable"), where, &QJsonValue::isBool,
                                             [](const QJsonValue &v) { return v.toBool(); });
    return device;
}

} // namespace

SimctlDeviceList SimctlDeviceList::decode(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        fail(QStringLiteral("%1 at offset %2").arg(error.errorString()).arg(error.offset));
    if (!document.isObject())
        fail(QStringLiteral("the top level is not an object"));
    const QJsonValue devices = document.object().value(QStringLiteral("devices"));
    if (devices.isUndefined())
        fail(QStringLiteral("there is no \"devices\" entry"));
    if (!devices.isObject())
        fail(QStringLiteral("\"devices\" is not an object"));

    SimctlDeviceList list;
    const QJsonObject runtimes = devices.toObject();
    for (auto it = runtimes.begin(); it != runtimes.end(); ++it) {
        if (!it.value().isArray())
            fail(QStringLiteral("the devices of %1 are not a list").arg(it.key()));
        QList<SimctlDevice> entries;
        const QJsonArray array = it.value().toArray();
        for (qsizetype i = 0; i < array.size(); ++i)
            entries.append(decodeDevice(array.at(i), QStringLiteral("device %1 of %2").arg(i + 1).arg(it.key())));
        list.devices.append({it.key(), entries});
    }
    return list;
}

QString SimctlDeviceList::runtimeText(const QString &runtimeKey)
{
    return QString(runtimeKey)
        .remove(QStringLiteral("com.apple.CoreSimulator.SimRuntime."))
        .replace(QLatin1Char('-'), QLatin1Char(' '));
}

QList<SimulatorDevice> SimctlDeviceList::iOSDevices() const
{
    QList<SimulatorDevice> result;
    for (const auto &[key, entries] : devices) {
        if (!key.contains(QLatin1String(".iOS-")) && !key.contains(QLatin1String(".iPadOS-")))
            continue;
        const QString runtime = runtimeText(key);
        for (const SimctlDevice &device : entries) {
            if (device.isAvailable == false)
                continue;
            result.append({device.name, device.udid, runtime, device.state.value_or(QStringLiteral("Unknown"))});
        }
    }
    std::stable_sort(result.begin(), result.end(), [](const SimulatorDevice &a, const SimulatorDevice &b) {
        if (a.name != b.name)
            return CodePointOrder::less(a.name, b.name);
        return CodePointOrder::less(a.runtime, b.runtime);
    });
    return result;
}
