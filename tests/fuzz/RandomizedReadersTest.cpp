// Where no libFuzzer is at hand (the usual build with GCC), the same readers
// get a fixed-seed stream of mutated inputs for a bounded time: the run is
// the same every time, so a failure can be replayed.

#include "FuzzInputs.h"
#include "TestSupport.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

namespace {

// Bytes that steer the readers into their corners.
const QList<QByteArray> tokens{"{", "}", "[", "]", "\"", ":", ",", "null", "true", "-1", "1e400", "0.5",
                               "\"..\"", "\"../x.png\"", "\"/etc/passwd\"", "\\u0000", "\\U00e9", "=", ";",
                               "\"filename\"", "\"manualScreens\"", "\"screens\"", "\"operations\"", "\"devices\"",
                               "\"projectID\"", "\"phase\"", "\"moves\"", "\"tap\"", "\"swipe\"", "\"wait\""};

QByteArray mutate(QByteArray data, QRandomGenerator &random)
{
    const int steps = 1 + random.bounded(8);
    for (int step = 0; step < steps && data.size() > 1; ++step) {
        const qsizetype at = 1 + random.bounded(data.size() - 1); // the first byte picks the reader
        switch (random.bounded(5)) {
        case 0: data[at] = char(data.at(at) ^ (1 << random.bounded(8))); break;
        case 1: data.remove(at, random.bounded(16)); break;
        case 2: data.insert(at, tokens.at(random.bounded(tokens.size()))); break;
        case 3: data.insert(at, data.mid(1 + random.bounded(data.size() - 1), random.bounded(32))); break;
        case 4: data.truncate(at); break;
        }
    }
    return data;
}

} // namespace

class RandomizedReadersTest : public QObject
{
    Q_OBJECT

private slots:
    void mutatedInputsNeverCrash()
    {
        QRandomGenerator random(20240611);
        const QList<QByteArray> seeds = FuzzInputs::seeds();
        for (const QByteArray &seed : seeds)
            FuzzInputs::feed(seed);
        QElapsedTimer timer;
        timer.start();
        int cases = 0;
        // Bounded by count for replayability and by time for the suite.
        while (cases < 20000 && timer.elapsed() < 20000) {
            QByteArray input = seeds.at(random.bounded(seeds.size()));
            input = mutate(input, random);
            FuzzInputs::feed(input);
            ++cases;
        }
        QVERIFY(cases > 0);
    }
};

VANTREL_TEST(RandomizedReadersTest);
#include "RandomizedReadersTest.moc"
