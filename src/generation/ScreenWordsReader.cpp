#include "ScreenWordsReader.h"

#include "LocalizationCheck.h"
#include "platform/BackgroundPriority.h"
#include "platform/PlatformServices.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QImage>
#include <QMutex>
#include <QThread>
#include <QThreadPool>
#include <QWaitCondition>

namespace {

// Screen text is large on a Simulator screenshot: at phone width it still
// reads the same words, and recognition takes a fraction of the time.
constexpr int recognitionWidth = 480;

// A read takes about a fifth of a second on an idle machine. A background
// read still going after this long is starved by busier work, and the
// asking thread reads the screenshot itself instead of waiting on.
constexpr int inFlightPatienceMilliseconds = 1000;

// The background reads: one thread, kept for good with the recognition
// engine it has loaded, at a low priority (set by the reads themselves) so
// that it mostly uses the time the device and the build leave free. Never
// destroyed: the exit never waits for it.
QThreadPool &readerPool()
{
    static QThreadPool *pool = [] {
        auto *threads = new QThreadPool;
        threads->setMaxThreadCount(1);
        threads->setExpiryTimeout(-1);
        return threads;
    }();
    return *pool;
}

} // namespace

struct ScreenWordsReader::State
{
    Read read;
    QMutex mutex;
    QWaitCondition changed;
    QStringList queue;
    QString reading; // on the background thread now
    QHash<QString, Words> done;
    bool stopping = false;

    void store(const QString &path, const Words &words)
    {
        if (!done.contains(path))
            done.insert(path, words);
    }

    // The background thread's loop, until the reader is gone.
    void work()
    {
        BackgroundPriority::lowerCurrentThread();
        QMutexLocker lock(&mutex);
        for (;;) {
            while (queue.isEmpty() && !stopping)
                changed.wait(&mutex);
            if (stopping)
                return;
            reading = queue.takeFirst();
            const QString path = reading;
            lock.unlock();
            const Words words = read(path);
            lock.relock();
            store(path, words);
            reading.clear();
            changed.wakeAll();
        }
    }
};

ScreenWordsReader::ScreenWordsReader(Read read) : m_state(std::make_shared<State>())
{
    m_state->read = std::move(read);
    std::shared_ptr<State> state = m_state;
    readerPool().start([state] { state->work(); });
}

ScreenWordsReader::~ScreenWordsReader()
{
    QMutexLocker lock(&m_state->mutex);
    m_state->stopping = true;
    m_state->queue.clear();
    m_state->changed.wakeAll();
    // The read function may use what its owner frees next.
    while (!m_state->reading.isEmpty())
        m_state->changed.wait(&m_state->mutex);
}

void ScreenWordsReader::add(const QString &path)
{
    QMutexLocker lock(&m_state->mutex);
    if (m_state->done.contains(path) || m_state->queue.contains(path) || m_state->reading == path)
        return;
    m_state->queue.append(path);
    m_state->changed.wakeAll();
}

ScreenWordsReader::Words ScreenWordsReader::words(const QString &path)
{
    State &state = *m_state;
    QMutexLocker lock(&state.mutex);
    if (state.reading == path) {
        const QDeadlineTimer patience(inFlightPatienceMilliseconds);
        while (state.reading == path && !state.done.contains(path))
            if (!state.changed.wait(&state.mutex, patience))
                break;
    }
    if (const auto found = state.done.constFind(path); found != state.done.constEnd())
        return *found;
    state.queue.removeAll(path);
    lock.unlock();
    const Words words = state.read(path);
    lock.relock();
    state.store(path, words);
    return state.done.value(path);
}

ScreenWordsReader::Words ScreenWordsReader::readScreenshot(PlatformServices &platform, const QString &path)
{
    QImage image(path);
    if (image.isNull())
        return std::nullopt;
    if (image.width() > recognitionWidth)
        image = image.scaledToWidth(recognitionWidth, Qt::SmoothTransformation);
    try {
        QStringList lines;
        for (const RecognizedTextLine &line : platform.recognizeText(image))
            lines.append(line.text);
        return LocalizationCheck::letterWords(lines.join(QLatin1Char('\n')));
    } catch (...) {
        return std::nullopt;
    }
}
