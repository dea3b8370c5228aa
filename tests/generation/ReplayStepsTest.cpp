// A recorded flow as replay steps: the wait rule, the steps per operation,
// and the screenshot names.

#include "TestSupport.h"
#include "model/AppModel.h"

#include <QTest>

class ReplayStepsTest : public QObject
{
    Q_OBJECT

private slots:
    void recordedWaitsAreShortenedAndClamped_data()
    {
        QTest::addColumn<double>("recorded");
        QTest::addColumn<double>("replayed");
        QTest::newRow("short wait gets the minimum") << 0.2 << 0.3;
        QTest::newRow("long wait gets the maximum") << 10.0 << 3.0;
        QTest::newRow("scaled") << 2.0 << 1.8;
        QTest::newRow("zero") << 0.0 << 0.0;
        QTest::newRow("negative") << -1.0 << 0.0;
    }

    void recordedWaitsAreShortenedAndClamped()
    {
        QFETCH(double, recorded);
        QFETCH(double, replayed);
        QCOMPARE(AppModel::replayWait(recorded), replayed);
    }

    void everyOperationBecomesOneStepThenAScreenshot()
    {
        ScreenDraft first;
        first.name = QStringLiteral("Home");
        ScreenDraft second;
        second.name = QStringLiteral("Set/tings: Ä");
        second.operations = {OperationDraft::tap(10, 20), OperationDraft::swipe(1, 2, 3, -4, 0.7),
                             OperationDraft::type(QStringLiteral("hi")), OperationDraft::wait(2)};
        using Kind = XCTestReplayStep::Kind;
        const QList<XCTestReplayStep> expected{
            {Kind::screenshot, 0, 0, 0, 0, 0.45, {}, QStringLiteral("01-Home.png")},
            {Kind::tap, 10, 20, 0, 0, 0.45, {}, {}},
            {Kind::swipe, 1, 2, 3, -4, 0.7, {}, {}},
            {Kind::type, 0, 0, 0, 0, 0.45, QStringLiteral("hi"), {}},
            {Kind::wait, 0, 0, 0, 0, 1.8, {}, {}},
            {Kind::screenshot, 0, 0, 0, 0, 0.45, {}, QStringLiteral("02-Set-tings-Ä.png")},
        };
        QCOMPARE(AppModel::replaySteps({first, second}), expected);
    }

    void numbersKeepTheProjectOrderPastNine()
    {
        QList<ScreenDraft> screens(12);
        for (int i = 0; i < screens.size(); ++i)
            screens[i].name = QStringLiteral("s");
        const QList<XCTestReplayStep> steps = AppModel::replaySteps(screens);
        QCOMPARE(steps.at(8).outputPath, QStringLiteral("09-s.png"));
        QCOMPARE(steps.at(11).outputPath, QStringLiteral("12-s.png"));
    }
};

VANTREL_TEST(ReplayStepsTest);
#include "ReplayStepsTest.moc"
