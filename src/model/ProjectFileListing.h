#pragma once
// The project files of a workspace folder (the library or the snapshot
// archive) and the dates they are sorted by.

#include "ReferenceDate.h"
#include "simulator/CodePointOrder.h"

#include <QDir>
#include <QFileInfo>
#include <QFileInfoList>
#include <algorithm>

namespace ProjectFileListing {

// What a file that cannot tell its date sorts as: older than everything.
inline constexpr ReferenceSeconds distantPast = -63114076800.0;

// The ".json" files of a folder (any letter case), in listing order: by
// file name in code-point order, as every list is sorted; none when the
// folder cannot be listed.
inline QFileInfoList jsonFiles(const QString &folder)
{
    QFileInfoList result;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden, QDir::NoSort);
    for (const QFileInfo &entry : entries)
        if (entry.suffix().toLower() == QLatin1String("json"))
            result.append(entry);
    std::sort(result.begin(), result.end(), [](const QFileInfo &a, const QFileInfo &b) {
        return CodePointOrder::less(a.fileName(), b.fileName());
    });
    return result;
}

inline ReferenceSeconds modificationDate(const QFileInfo &info)
{
    const QDateTime modified = info.lastModified();
    return modified.isValid() ? ReferenceDate::fromDateTime(modified) : distantPast;
}

} // namespace ProjectFileListing
