#include "TestSupport.h"
#include "replay/ProgressCursor.h"

#include <QFile>
#include <QTest>

class ProgressCursorTest : public QObject
{
    Q_OBJECT

private slots:
    void handsOutEachNewLineOnceInFileOrder()
    {
        QTemporaryDir directory;
        const QString file = directory.filePath(QStringLiteral("progress.log"));
        QStringList delivered;
        ProgressCursor cursor(file, [&delivered](const QString &line) { delivered.append(line); });

        cursor.deliver(); // not written yet
        QVERIFY(delivered.isEmpty());

        TestSupport::writeFile(file, "a.png\n\nb.png\n c.png \n");
        cursor.deliver();
        QCOMPARE(delivered, (QStringList{QStringLiteral("a.png"), QStringLiteral("b.png"), QStringLiteral(" c.png ")}));

        cursor.deliver(); // nothing new
        QCOMPARE(delivered.size(), 3);

        QFile append(file);
        QVERIFY(append.open(QIODevice::Append));
        append.write("d.png\n");
        append.close();
        cursor.deliver();
        QCOMPARE(delivered.size(), 4);
        QCOMPARE(delivered.last(), QStringLiteral("d.png"));
    }

    void unreadableTextDeliversNothing()
    {
        QTemporaryDir directory;
        const QString file = TestSupport::writeFile(directory.filePath(QStringLiteral("progress.log")), "a.png\n\xff\xfe\n");
        int calls = 0;
        ProgressCursor cursor(file, [&calls](const QString &) { ++calls; });
        cursor.deliver();
        QCOMPARE(calls, 0);
    }
};

VANTREL_TEST(ProgressCursorTest);
#include "ProgressCursorTest.moc"
