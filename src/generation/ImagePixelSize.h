#pragma once
// The pixel size of an image file, read from its header alone (no decode).

#include <QImageReader>
#include <QSize>
#include <QString>

namespace ImagePixelSize {

// An invalid size when the file is missing or no image.
inline QSize of(const QString &path)
{
    return QImageReader(path).size();
}

} // namespace ImagePixelSize
