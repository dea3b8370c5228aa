#pragma once
// Reads the words of a run's screenshots for the localization check, beside
// the run: one background thread of low priority takes the screenshots in
// the order they were added, as the device writes them, so that by the time
// the run needs a screenshot's words they are mostly read. What the thread
// has not got to yet when the run asks is read by the asking thread at its
// own priority: the run never waits behind a slow background thread.

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

class PlatformServices;

class ScreenWordsReader
{
public:
    // The letter words of a screenshot, or nothing when it cannot be read.
    using Words = std::optional<QStringList>;
    using Read = std::function<Words(const QString &path)>;

    // `read` is called on the background thread and on the thread that
    // asks for words, possibly at the same time.
    explicit ScreenWordsReader(Read read);
    // Drops what is still queued; waits for a read in progress (one
    // screenshot at the most), so that `read` is never called after.
    ~ScreenWordsReader();
    ScreenWordsReader(const ScreenWordsReader &) = delete;
    ScreenWordsReader &operator=(const ScreenWordsReader &) = delete;

    // Queues a screenshot to be read in the background; returns at once.
    void add(const QString &path);
    // The screenshot's words: read already, read by the background thread
    // meanwhile (waiting a moment for a read in progress), or else read now.
    // A path never added is read now.
    Words words(const QString &path);

    // The letter words (LocalizationCheck::letterWords) of the text the
    // platform recognises on the screenshot at `path`.
    static Words readScreenshot(PlatformServices &platform, const QString &path);

private:
    struct State;
    std::shared_ptr<State> m_state;
};
