#pragma once
// A deliberately coarse comparison of a generated screenshot with its
// recorded reference: both are shrunk to a tiny thumbnail and compared by
// mean colour difference. Translated text barely moves the score; a dialog,
// a paywall or the wrong screen moves it a lot.

#include <QByteArray>
#include <QImage>
#include <optional>

namespace ScreenshotDriftDetector {

constexpr int thumbnailWidth = 32;
constexpr int thumbnailHeight = 70; // a portrait proportion close to a phone screen
constexpr int bytesPerRow = thumbnailWidth * 4;
constexpr int sampleByteCount = bytesPerRow * thumbnailHeight; // 8960

// The whole image stretched over an opaque black 32 x 70 RGBA bitmap
// (8 bits per sample, alpha not premultiplied, rows from the top), or
// nothing when the image is empty or the bitmap cannot be made.
std::optional<QByteArray> samples(const QImage &image);

// Mean absolute difference of the red, green and blue samples of two
// thumbnails of equal length, from 0 (identical) to 1 (black against
// white everywhere); alpha is ignored.
double score(const QByteArray &a, const QByteArray &b);

} // namespace ScreenshotDriftDetector
