#include "TesseractTextRecognizer.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <memory>

namespace TesseractTextRecognizer {

namespace {

// Lines the engine itself doubts this much are shapes, not words.
constexpr float minimumConfidence = 40.0f;

// Device screenshots are large (a phone at 3x is over 2500 pixels high) while
// the engine reads best, and several times faster, with letters a few dozen
// pixels high; the smallest text worth reading stays legible at this height.
constexpr int workingHeight = 1400;

struct PixDeleter
{
    void operator()(Pix *pix) const { pixDestroy(&pix); }
};
using PixPointer = std::unique_ptr<Pix, PixDeleter>;

// An 8-bit grey Pix with the image's pixels, built in memory.
PixPointer greyPix(const QImage &image)
{
    const QImage scaled = image.height() > workingHeight
                              ? image.scaledToHeight(workingHeight, Qt::SmoothTransformation)
                              : image;
    const QImage grey = scaled.convertToFormat(QImage::Format_Grayscale8);
    PixPointer pix(pixCreate(grey.width(), grey.height(), 8));
    if (!pix)
        return nullptr;
    l_uint32 *data = pixGetData(pix.get());
    const l_int32 wordsPerLine = pixGetWpl(pix.get());
    for (int y = 0; y < grey.height(); ++y) {
        const uchar *source = grey.constScanLine(y);
        l_uint32 *line = data + y * wordsPerLine;
        for (int x = 0; x < grey.width(); ++x)
            SET_DATA_BYTE(line, x, source[x]);
    }
    return pix;
}

QRectF normalizedBox(int left, int top, int right, int bottom, QSize size)
{
    const double w = size.width();
    const double h = size.height();
    return QRectF(left / w, (h - bottom) / h, (right - left) / w, (bottom - top) / h);
}

QList<RecognizedTextLine> readLines(tesseract::TessBaseAPI &api, QSize size)
{
    QList<RecognizedTextLine> lines;
    std::unique_ptr<tesseract::ResultIterator> it(api.GetIterator());
    if (!it)
        return lines;
    const auto level = tesseract::RIL_TEXTLINE;
    do {
        const std::unique_ptr<char[]> utf8(it->GetUTF8Text(level));
        if (!utf8)
            continue;
        int left = 0, top = 0, right = 0, bottom = 0;
        if (!it->BoundingBox(level, &left, &top, &right, &bottom))
            continue;
        const QString text = QString::fromUtf8(utf8.get()).trimmed();
        const float confidence = it->Confidence(level);
        const QRectF box = normalizedBox(left, top, right, bottom, size);
        if (text.isEmpty() || confidence < minimumConfidence || box.height() < minimumTextHeight)
            continue;
        lines.append({text, box});
    } while (it->Next(level));
    return lines;
}

} // namespace

QList<RecognizedTextLine> recognize(const QImage &image)
{
    if (image.isNull() || image.width() < 1 || image.height() < 1)
        return {};
    tesseract::TessBaseAPI api;
    // Keep the engine's chatter (resolution guesses and the like) off the terminal.
    api.SetVariable("debug_file", "/dev/null");
    if (api.Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY) != 0)
        return {};
    api.SetPageSegMode(tesseract::PSM_SPARSE_TEXT);
    PixPointer pix = greyPix(image);
    if (!pix)
        return {};
    api.SetImage(pix.get());
    api.SetSourceResolution(144);
    if (api.Recognize(nullptr) != 0)
        return {};
    QList<RecognizedTextLine> lines = readLines(api, QSize(pixGetWidth(pix.get()), pixGetHeight(pix.get())));
    api.End();
    return lines;
}

} // namespace TesseractTextRecognizer
