// The localization check's background reading: screenshots are read once,
// in the background as they are added, and the run never waits behind a
// background read that has not started or does not finish.

#include "TestSupport.h"

#include "generation/ScreenWordsReader.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QImage>
#include <QMutex>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

namespace {

// A read function that records who read what, and can hold a read until
// the test lets it go.
struct Reads
{
    QMutex mutex;
    QList<std::pair<QString, QThread *>> log;
    QString held; // this path's read waits for `release`
    QSemaphore holding;
    QSemaphore release;
    QSemaphore finished; // one per read done

    ScreenWordsReader::Read function()
    {
        return [this](const QString &path) -> ScreenWordsReader::Words {
            {
                QMutexLocker lock(&mutex);
                log.append({path, QThread::currentThread()});
            }
            if (path == held) {
                holding.release();
                release.acquire();
            }
            finished.release();
            return QStringList{path.toLower()};
        };
    }
    QList<QThread *> readersOf(const QString &path)
    {
        QMutexLocker lock(&mutex);
        QList<QThread *> threads;
        for (const auto &[p, thread] : log)
            if (p == path)
                threads.append(thread);
        return threads;
    }
};

} // namespace

class ScreenWordsReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void addedScreenshotsAreReadOnceInTheBackground()
    {
        Reads reads;
        ScreenWordsReader reader(reads.function());
        for (const char *path : {"A", "B", "C"})
            reader.add(path);
        reader.add("A"); // again: still once
        QVERIFY(reads.finished.tryAcquire(3, 10000));
        for (const char *path : {"C", "A", "B"})
            QCOMPARE(reader.words(path), std::optional(QStringList{QString(path).toLower()}));
        for (const char *path : {"A", "B", "C"}) {
            const QList<QThread *> threads = reads.readersOf(path);
            QCOMPARE(threads.size(), 1);
            QVERIFY(threads.first() != QThread::currentThread());
        }
    }

    void whatTheBackgroundHasNotStartedIsReadByTheAsker()
    {
        Reads reads;
        reads.held = "A";
        ScreenWordsReader reader(reads.function());
        reader.add("A");
        QVERIFY(reads.holding.tryAcquire(1, 10000)); // the background is busy with A
        reader.add("B");
        QCOMPARE(reader.words("B"), std::optional(QStringList{"b"}));
        QCOMPARE(reader.words("never added"), std::optional(QStringList{"never added"}));
        QCOMPARE(reads.readersOf("B"), QList<QThread *>{QThread::currentThread()});
        QCOMPARE(reads.readersOf("never added"), QList<QThread *>{QThread::currentThread()});
        reads.release.release();
        QVERIFY(reads.finished.tryAcquire(3, 10000));
        QCOMPARE(reads.readersOf("B").size(), 1); // taken off the background's queue
    }

    void aStalledBackgroundReadIsDoneAgainByTheAsker()
    {
        Reads reads;
        reads.held = "A";
        auto reader = std::make_unique<ScreenWordsReader>(reads.function());
        reader->add("A");
        QVERIFY(reads.holding.tryAcquire(1, 10000));
        // The held path is read by the asker too (after a moment's patience).
        reads.held.clear();
        QCOMPARE(reader->words("A"), std::optional(QStringList{"a"}));
        QCOMPARE(reads.readersOf("A").size(), 2);
        QCOMPARE(reads.readersOf("A").last(), QThread::currentThread());

        // Gone only once the background read has ended: the read function
        // is never called after.
        QThread *closer = QThread::create([&reader] { reader.reset(); });
        closer->start();
        QVERIFY(!closer->wait(200));
        reads.release.release();
        QVERIFY(closer->wait(10000));
        delete closer;
        QVERIFY(reads.finished.tryAcquire(2, 10000));
    }

    void screenshotWords_data()
    {
        QTest::addColumn<bool>("picture");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<std::optional<QStringList>>("words");
        QTest::newRow("letter words of every line") << true << QStringList{"My Trips", "May 12 \u00b7 5 nights"}
                                                    << std::optional(QStringList{"my", "trips", "may", "nights"});
        QTest::newRow("no text") << true << QStringList{} << std::optional(QStringList{});
        QTest::newRow("not a picture") << false << QStringList{"My Trips"} << std::optional<QStringList>();
    }
    void screenshotWords()
    {
        QFETCH(bool, picture);
        QFETCH(QStringList, lines);
        QFETCH(std::optional<QStringList>, words);
        QTemporaryDir dir;
        const QString path = dir.filePath("01-trips.png");
        if (picture) {
            QImage image(1179, 2556, QImage::Format_RGB32);
            image.fill(Qt::white);
            QVERIFY(image.save(path));
        } else {
            TestSupport::writeFile(path, "not a png");
        }
        ScriptedPlatformServices platform;
        for (const QString &line : lines)
            platform.recognizedLines.append({line, QRectF(0.1, 0.5, 0.8, 0.05)});
        QCOMPARE(ScreenWordsReader::readScreenshot(platform, path), words);
    }
};

VANTREL_TEST(ScreenWordsReaderTest);
#include "ScreenWordsReaderTest.moc"
