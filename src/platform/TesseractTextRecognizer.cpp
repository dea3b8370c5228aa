#include "TesseractTextRecognizer.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <dlfcn.h>
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

// A Tesseract built with OpenMP splits every text line over four threads
// that spin while they wait for each other. On a small machine that also
// runs the device and the build, that costs several times the work itself
// (a screenshot read in 0.15 s of processor time takes a second and more).
// One thread per recognition is cheaper in total, and recognitions that
// must go faster run side by side instead. The switch is looked up at run
// time: a Tesseract without OpenMP brings no such library and needs none.
void keepRecognitionOnOneThread()
{
    using SetMaxActiveLevels = void (*)(int);
    if (auto set = reinterpret_cast<SetMaxActiveLevels>(dlsym(RTLD_DEFAULT, "omp_set_max_active_levels")))
        set(0); // no parallel region becomes active: each runs on the thread that enters it
}

// One engine per thread, made on its first recognition and kept: loading
// the language model costs more than reading a screen. An engine serves one
// thread at a time, so threads never share one.
class Engine
{
public:
    Engine()
    {
        keepRecognitionOnOneThread();
        // Keep the engine's chatter (resolution guesses and the like) off the terminal.
        m_api.SetVariable("debug_file", "/dev/null");
        m_ready = m_api.Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY) == 0;
        // Screens are scattered labels and buttons, not paragraphs.
        m_api.SetPageSegMode(tesseract::PSM_SPARSE_TEXT);
    }
    ~Engine() { m_api.End(); }
    Engine(const Engine &) = delete;
    Engine &operator=(const Engine &) = delete;

    QList<RecognizedTextLine> read(Pix *pix)
    {
        if (!m_ready)
            return {};
        m_api.SetImage(pix);
        m_api.SetSourceResolution(144);
        QList<RecognizedTextLine> lines;
        if (m_api.Recognize(nullptr) == 0)
            lines = readLines(m_api, QSize(pixGetWidth(pix), pixGetHeight(pix)));
        m_api.Clear(); // the image and the results, not the model
        return lines;
    }

private:
    tesseract::TessBaseAPI m_api;
    bool m_ready = false;
};

Engine &threadEngine()
{
    thread_local Engine engine;
    return engine;
}

} // namespace

QList<RecognizedTextLine> recognize(const QImage &image)
{
    if (image.isNull() || image.width() < 1 || image.height() < 1)
        return {};
    PixPointer pix = greyPix(image);
    if (!pix)
        return {};
    return threadEngine().read(pix.get());
}

} // namespace TesseractTextRecognizer
