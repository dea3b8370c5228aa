#pragma once
// Text recognition with Tesseract (line level), for desktops without a text
// recogniser of their own. Safe to call from any thread: every thread keeps
// an engine of its own, loaded on its first call.

#include "platform/PlatformServices.h"

#include <QImage>
#include <QList>

namespace TesseractTextRecognizer {

// Lines shorter than this share of the image height are not read: at that
// size they are status-bar glyphs or noise, never a screen title.
constexpr double minimumTextHeight = 0.012;

// The recognised lines, boxes normalised with the origin at the bottom left.
// An image the engine cannot read, or a missing language model, gives none.
QList<RecognizedTextLine> recognize(const QImage &image);

} // namespace TesseractTextRecognizer
