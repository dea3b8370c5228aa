#pragma once
// The JSON form of a project document. Decoding is strict about the keys the
// document needs and their types, ignores unknown keys at every level, and
// explains a rejection in words a person can act on (which key, which type).

#include "ScreenshotProject.h"

#include <QByteArray>
#include <QJsonObject>

namespace ProjectCoding {

enum class Layout { Compact, PrettySorted };

QJsonObject encode(const ScreenshotProject &project);
QByteArray encodeBytes(const ScreenshotProject &project, Layout layout = Layout::Compact);

QJsonObject encodeOperation(const OperationDraft &operation);
QJsonObject encodeScreen(const ScreenDraft &screen);

// Throws AppError whose message describes the first problem found.
ScreenshotProject decode(const QByteArray &bytes);
ScreenshotProject decode(const QJsonObject &object);
OperationDraft decodeOperation(const QJsonObject &object);

} // namespace ProjectCoding
