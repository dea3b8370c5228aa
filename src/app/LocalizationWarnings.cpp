#include "LocalizationWarning.h"

#include "generation/LocalizationCheck.h"
#include "model/AtomicFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QString LocalizationWarning::text() const
{
    return LocalizationCheck::warningText(language, deviceName + QLatin1Char('/') + file, firstLanguage);
}

namespace LocalizationWarnings {

namespace {

const QString languageKey = QStringLiteral("language");
const QString firstLanguageKey = QStringLiteral("firstLanguage");
const QString deviceKey = QStringLiteral("device");
const QString fileKey = QStringLiteral("file");

} // namespace

QString fileName() { return QStringLiteral("localization-warnings.json"); }

void applyDismissals(Store &store)
{
    for (LocalizationWarning &warning : store.warnings)
        warning.dismissed = store.dismissed.contains(std::pair(warning.file, warning.language));
}

Store read(const QString &outputDirectory)
{
    Store store;
    const std::optional<QByteArray> bytes = AtomicFile::readIfExists(QDir(outputDirectory).filePath(fileName()));
    if (!bytes)
        return store;
    const QJsonObject root = QJsonDocument::fromJson(*bytes).object();
    for (const QJsonValue &value : root.value(QStringLiteral("warnings")).toArray()) {
        const QJsonObject item = value.toObject();
        LocalizationWarning warning{item.value(languageKey).toString(), item.value(firstLanguageKey).toString(),
                                    item.value(deviceKey).toString(), item.value(fileKey).toString()};
        if (!warning.language.isEmpty() && !warning.file.isEmpty())
            store.warnings.append(warning);
    }
    for (const QJsonValue &value : root.value(QStringLiteral("dismissed")).toArray()) {
        const QJsonObject item = value.toObject();
        store.dismissed.append({item.value(fileKey).toString(), item.value(languageKey).toString()});
    }
    applyDismissals(store);
    return store;
}

void write(const QString &outputDirectory, const Store &store)
{
    QJsonArray warnings;
    for (const LocalizationWarning &warning : store.warnings)
        warnings.append(QJsonObject{{languageKey, warning.language},
                                    {firstLanguageKey, warning.firstLanguage},
                                    {deviceKey, warning.deviceName},
                                    {fileKey, warning.file}});
    QJsonArray dismissed;
    for (const auto &[file, language] : store.dismissed)
        dismissed.append(QJsonObject{{fileKey, file}, {languageKey, language}});
    const QJsonObject root{{QStringLiteral("warnings"), warnings}, {QStringLiteral("dismissed"), dismissed}};
    AtomicFile::write(QDir(outputDirectory).filePath(fileName()), QJsonDocument(root).toJson());
}

} // namespace LocalizationWarnings
