// Where checkpoint reference images live: the folder "manual" inside the
// project's output folder, named "NN-name.png".

#include "model/AppModel.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

QString AppModel::manualCaptureDirectory() const
{
    return project.outputDirectory + QStringLiteral("/manual");
}

QStringList AppModel::manualCaptureURLs() const
{
    const QFileInfoList entries = QDir(manualCaptureDirectory()).entryInfoList(QDir::Files, QDir::NoSort);
    QStringList paths;
    for (const QFileInfo &entry : entries)
        if (entry.suffix().toLower() == QLatin1String("png"))
            paths.append(entry.absoluteFilePath());
    // Natural order, as a file browser shows them: 2 before 10.
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(paths.begin(), paths.end(), [&collator](const QString &a, const QString &b) {
        return collator.compare(QFileInfo(a).fileName(), QFileInfo(b).fileName()) < 0;
    });
    return paths;
}

std::optional<qint64> AppModel::manualCaptureNumber(const QString &path)
{
    const QString base = QFileInfo(path).completeBaseName();
    const qsizetype dash = base.indexOf(QLatin1Char('-'));
    QStringList pieces = dash < 0 ? QStringList{base} : QStringList{base.left(dash), base.mid(dash + 1)};
    pieces.removeAll(QString());
    if (pieces.isEmpty())
        return std::nullopt;
    const QString first = pieces.first();
    bool ok = false;
    const qint64 number = first.toLongLong(&ok, 10);
    return ok ? std::optional(number) : std::nullopt;
}

bool AppModel::isManualCaptureURL(const QString &path) const
{
    return QDir::cleanPath(QFileInfo(path).absolutePath()) == QDir::cleanPath(manualCaptureDirectory());
}

std::optional<QString> AppModel::existingLastManualCaptureURL() const
{
    if (lastManualCaptureURL && QFileInfo::exists(*lastManualCaptureURL) && isManualCaptureURL(*lastManualCaptureURL))
        return lastManualCaptureURL;
    const QStringList all = manualCaptureURLs();
    if (all.isEmpty())
        return std::nullopt;
    return all.last();
}
