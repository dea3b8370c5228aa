// How long each tool may run, and how much of its complaint a message keeps.

#include "TestSupport.h"
#include "replay/CommandTimeLimit.h"
#include "replay/OutputTail.h"

#include <QTest>

class ToolLimitsTest : public QObject
{
    Q_OBJECT

private slots:
    void timeLimits_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("seconds"); // 0: no limit
        QTest::newRow("device list") << "xcrun" << QStringList{"simctl", "list", "devices", "--json"} << 30;
        QTest::newRow("screenshot") << "xcrun" << QStringList{"simctl", "io", "U", "screenshot", "/p"} << 30;
        QTest::newRow("terminate") << "xcrun" << QStringList{"simctl", "terminate", "U", "b"} << 30;
        QTest::newRow("launch") << "xcrun" << QStringList{"simctl", "launch", "U", "b"} << 120;
        QTest::newRow("install") << "xcrun" << QStringList{"simctl", "install", "U", "/a.app"} << 120;
        QTest::newRow("status bar") << "xcrun" << QStringList{"simctl", "status_bar", "U", "clear"} << 120;
        QTest::newRow("boot") << "xcrun" << QStringList{"simctl", "boot", "U"} << 120;
        QTest::newRow("boot status") << "xcrun" << QStringList{"simctl", "bootstatus", "U", "-b"} << 120;
        QTest::newRow("find the build tool") << "xcrun" << QStringList{"--find", "xcodebuild"} << 30;
        QTest::newRow("open") << "open" << QStringList{"-a", "Simulator"} << 30;
        QTest::newRow("build and test") << "xcodebuild" << QStringList{"test"} << 0;
    }

    void timeLimits()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, arguments);
        QFETCH(int, seconds);
        QCOMPARE(CommandTimeLimit::seconds(command, arguments).value_or(0), seconds);
    }

    void exceededMessageNamesTheCommandAndTheLimit()
    {
        QCOMPARE(CommandTimeLimit::exceededMessage("xcrun", {"simctl", "list"}, 30),
                 QString("xcrun simctl list did not finish within 30 seconds and was ended."));
    }

    void tails_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("short stays whole") << "reason\n" << "reason\n";
        QTest::newRow("exactly 4 KB") << QString(4096, 'a') << QString(4096, 'a');
        QTest::newRow("one byte more") << QString(4097, 'a') << "[the first 1 bytes are left out]\n" + QString(4096, 'a');
        // Three-byte characters: the cut moves forward to the next whole one.
        QTest::newRow("whole lines") << "first\n" + QString(4090, 'b') + "\nlast\n"
                                     << "[the first 4097 bytes are left out]\nlast\n";
        QTest::newRow("never inside a character") << QString(1400, QChar(0x65E5))
                                                  << "[the first 105 bytes are left out]\n" + QString(1365, QChar(0x65E5));
    }

    void tails()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(OutputTail::of(text), expected);
    }
};

VANTREL_TEST(ToolLimitsTest);
#include "ToolLimitsTest.moc"
