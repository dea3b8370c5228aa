#include "AppBundleInspector.h"

#include "CodePointOrder.h"
#include "model/AppError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <plist/plist.h>

namespace {

using PlistHandle = std::unique_ptr<std::remove_pointer_t<plist_t>, decltype(&plist_free)>;

PlistHandle readPropertyList(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw AppError(QStringLiteral("Could not read %1: %2").arg(path, file.errorString()));
    const QByteArray bytes = file.readAll();
    plist_t root = nullptr;
    if (!bytes.isEmpty() && bytes.size() <= std::numeric_limits<uint32_t>::max())
        plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
    if (!root)
        throw AppError(QStringLiteral("%1 is not a valid property list.").arg(path));
    return PlistHandle(root, &plist_free);
}

std::optional<QString> stringValue(plist_t node)
{
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return std::nullopt;
    char *value = nullptr;
    plist_get_string_val(node, &value);
    const QString text = QString::fromUtf8(value);
    std::free(value);
    return text;
}

// A key of the top-level dictionary; a top level that is no dictionary
// counts as an empty one.
plist_t item(plist_t root, const char *key)
{
    return plist_get_node_type(root) == PLIST_DICT ? plist_dict_get_item(root, key) : nullptr;
}

QStringList stringList(plist_t node)
{
    QStringList list;
    if (!node || plist_get_node_type(node) != PLIST_ARRAY)
        return list;
    for (uint32_t i = 0; i < plist_array_get_size(node); ++i) {
        const std::optional<QString> text = stringValue(plist_array_get_item(node, i));
        if (!text)
            return {}; // not a list of text: counts as empty
        list.append(*text);
    }
    return list;
}

QStringList localizations(const QString &bundlePath)
{
    QStringList names;
    const QFileInfoList entries =
        QDir(bundlePath).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        const QString name = entry.completeBaseName();
        if (entry.suffix() == QLatin1String("lproj") && !name.isEmpty() && name != QLatin1String("Base"))
            names.append(name);
    }
    std::sort(names.begin(), names.end(), CodePointOrder::less);
    return names;
}

} // namespace

namespace AppBundleInspector {

Info inspect(const QString &bundlePath)
{
    const PlistHandle root = readPropertyList(bundlePath + QStringLiteral("/Info.plist"));
    Info info;
    info.bundleIdentifier = stringValue(item(root.get(), "CFBundleIdentifier")).value_or(QString());
    info.displayName = stringValue(item(root.get(), "CFBundleDisplayName"))
                           .value_or(stringValue(item(root.get(), "CFBundleName"))
                                         .value_or(QFileInfo(bundlePath).completeBaseName()));
    info.isSimulatorBuild =
        stringList(item(root.get(), "CFBundleSupportedPlatforms")).contains(QStringLiteral("iPhoneSimulator"));
    info.localizations = localizations(bundlePath);
    if (info.bundleIdentifier.isEmpty())
        throw AppError(QStringLiteral("Could not read CFBundleIdentifier from Info.plist."));
    return info;
}

} // namespace AppBundleInspector
