#pragma once
// Generated screenshots as the review gallery shows them.

#include <QList>
#include <QString>

struct ReviewImage
{
    QString url;          // absolute file path
    QString relativePath; // path below the output directory, e.g. de-DE/iPhone/01-home.png
    // Why the image was not checked for drift, or empty: AppModel::noReferenceNote
    // for the first language on a device whose size no reference has.
    QString note;
    bool operator==(const ReviewImage &) const = default;
};

struct GeneratedLanguageGroup
{
    QString language; // first path component of the images' relativePath
    QList<ReviewImage> images;
    bool operator==(const GeneratedLanguageGroup &) const = default;
};
