#pragma once
// Drift thumbnails of image files, made on background threads and kept for
// as long as the file stays the same (same size and modification time).
//
// A reference is compared once per language, so it is decoded once per run
// instead of once per language; and a generated screenshot can be shrunk
// while the device is still busy with the next one (prefetch), so that the
// check after a language mostly finds its thumbnails ready.

#include <QByteArray>
#include <QFuture>
#include <QString>
#include <optional>

namespace ThumbnailCache {

// The thumbnail of the file as it is now (ScreenshotDriftDetector::samples),
// or nothing when the file is missing or no image. Never blocks.
QFuture<std::optional<QByteArray>> thumbnail(const QString &path);

// Starts making the thumbnail; returns at once.
inline void prefetch(const QString &path) { thumbnail(path); }

} // namespace ThumbnailCache
