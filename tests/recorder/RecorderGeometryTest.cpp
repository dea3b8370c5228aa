// From a desktop point in the Simulator window to a recorded operation: the
// device screen's place in the window, tap or swipe, and the status wording.

#include "TestSupport.h"

#include "recorder/OperationDescription.h"
#include "recorder/RecordedGesture.h"
#include "recorder/SimulatorScreenMapper.h"

#include <QTest>

Q_DECLARE_METATYPE(std::optional<QPointF>)
Q_DECLARE_METATYPE(OperationDraft)

class RecorderGeometryTest : public QObject
{
    Q_OBJECT

private slots:
    void devicePoint_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<QSizeF>("device");
        QTest::addColumn<QPointF>("pointer");
        QTest::addColumn<std::optional<QPointF>>("expected");

        // A 300 x 434 window: its top 34 points are title strip, leaving 300 x 400
        // for a 200 x 400 device, which fits by height with 50-point bars beside it.
        const QRectF tall(100, 50, 300, 434);
        const QSizeF phone(200, 400);
        QTest::newRow("centre") << tall << phone << QPointF(250, 250) << std::optional(QPointF(100, 200));
        QTest::newRow("top-left corner") << tall << phone << QPointF(150, 450) << std::optional(QPointF(0, 0));
        QTest::newRow("bottom-right corner") << tall << phone << QPointF(350, 50) << std::optional(QPointF(200, 400));
        QTest::newRow("left letterbox") << tall << phone << QPointF(149, 250) << std::optional<QPointF>();
        QTest::newRow("right letterbox") << tall << phone << QPointF(351, 250) << std::optional<QPointF>();
        QTest::newRow("title strip") << tall << phone << QPointF(250, 470) << std::optional<QPointF>();
        QTest::newRow("below the window") << tall << phone << QPointF(250, 49) << std::optional<QPointF>();

        // A short window: 18 % of 100 is less than 34, so the strip is 18 high.
        QTest::newRow("short window strip") << QRectF(0, 0, 41, 100) << QSizeF(41, 82) << QPointF(20.5, 82)
                                            << std::optional(QPointF(20.5, 0));
        QTest::newRow("short window, in strip") << QRectF(0, 0, 41, 100) << QSizeF(41, 82) << QPointF(20.5, 83)
                                                << std::optional<QPointF>();

        // A landscape device fits by width, with bars above and below.
        const QSizeF landscape(400, 200);
        QTest::newRow("landscape centre") << tall << landscape << QPointF(250, 250) << std::optional(QPointF(200, 100));
        QTest::newRow("landscape top edge") << tall << landscape << QPointF(100, 325) << std::optional(QPointF(0, 0));
        QTest::newRow("landscape upper bar") << tall << landscape << QPointF(250, 326) << std::optional<QPointF>();
    }

    void devicePoint()
    {
        QFETCH(QRectF, frame);
        QFETCH(QSizeF, device);
        QFETCH(QPointF, pointer);
        QFETCH(std::optional<QPointF>, expected);
        const std::optional<QPointF> actual = SimulatorScreenMapper::devicePoint(pointer, frame, device);
        QCOMPARE(actual.has_value(), expected.has_value());
        if (expected) {
            QVERIFY2(qAbs(actual->x() - expected->x()) < 1e-9 && qAbs(actual->y() - expected->y()) < 1e-9,
                     qPrintable(QStringLiteral("%1,%2").arg(actual->x()).arg(actual->y())));
            QVERIFY(actual->x() >= 0 && actual->x() <= device.width());
            QVERIFY(actual->y() >= 0 && actual->y() <= device.height());
        }
    }

    void tapOrSwipe_data()
    {
        QTest::addColumn<QPointF>("release");
        QTest::addColumn<double>("held");
        QTest::addColumn<QString>("expected");
        // The press is at desktop (100, 100), device (10.5, 20.4); the release's
        // device point is (30.5, -2.5) whenever it is used.
        QTest::newRow("still") << QPointF(100, 100) << 0.1 << "tap-11-20";
        QTest::newRow("9.9 away is a tap at the press") << QPointF(109.9, 100) << 0.3 << "tap-11-20";
        QTest::newRow("10.0 away is a swipe") << QPointF(106, 108) << 0.3 << "swipe-11-20-31--3-0.3";
        QTest::newRow("quick swipe presses 0.15") << QPointF(100, 150) << 0.1 << "swipe-11-20-31--3-0.15";
        QTest::newRow("long hold presses 2.0") << QPointF(100, 150) << 5.0 << "swipe-11-20-31--3-2.0";
    }

    void tapOrSwipe()
    {
        QFETCH(QPointF, release);
        QFETCH(double, held);
        QFETCH(QString, expected);
        const RecordedGesture::Touch press{{100, 100}, {10.5, 20.4}, 0.0};
        const RecordedGesture::Touch up{release, {30.5, -2.5}, held};
        QCOMPARE(RecordedGesture::fromPressAndRelease(press, up).identity(), expected);
    }

    void roundsHalfAwayFromZero()
    {
        QCOMPARE(RecordedGesture::wholePoint(2.5), 3);
        QCOMPARE(RecordedGesture::wholePoint(3.5), 4);
        QCOMPARE(RecordedGesture::wholePoint(-2.5), -3);
        QCOMPARE(RecordedGesture::wholePoint(2.49), 2);
    }
};

VANTREL_TEST(RecorderGeometryTest);
#include "RecorderGeometryTest.moc"
