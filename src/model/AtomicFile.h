#pragma once
// Whole-file reads and atomic writes: a write lands completely or not at
// all, so a crash or a full disk never leaves a half-written project.

#include <QByteArray>
#include <QString>
#include <optional>

namespace AtomicFile {
// Throws AppError with the file system's description.
void write(const QString &path, const QByteArray &bytes);
QByteArray read(const QString &path);
// Nothing when the file does not exist or cannot be read.
std::optional<QByteArray> readIfExists(const QString &path);
}
