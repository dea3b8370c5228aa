// Progress bookkeeping of a run: totals, clamping, and how the endings
// change the states.

#include "ModelFixture.h"
#include "TestSupport.h"

#include <QTest>

class RunProgressTest : public QObject
{
    Q_OBJECT

    std::optional<ModelFixture> f;

    RunProgress entry(const QString &language, const QString &device = QStringLiteral("D1")) const
    {
        return f->model->runProgress().value(RunProgress::key(language, device));
    }

private slots:
    void init()
    {
        f.emplace();
        arrange(*f->model).project.devices = {QStringLiteral("D1"), QStringLiteral("D2")};
        arrange(*f->model).project.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE")};
        arrange(*f->model).project.screens = QList<ScreenDraft>(3);
    }

    void countsAreClampedIntoTheTotal()
    {
        arrange(*f->model).runProgress = f->model->initializedRunProgress();
        for (int i = 0; i < 5; ++i) // more lines than screens
            f->model->incrementRunProgress(QStringLiteral("en-US"), QStringLiteral("D1"));
        QCOMPARE(entry(QStringLiteral("en-US")).completed, 3);
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::running);
        f->model->updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D1"), -2, RunProgressState::running);
        QCOMPARE(entry(QStringLiteral("de-DE")).completed, 0);
        f->model->updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D1"), 9, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).completed, 3);
        QCOMPARE(f->model->completedRunProgressCount(), 6);
    }

    void endingsChangeOnlyUnfinishedPairs()
    {
        arrange(*f->model).runProgress = f->model->initializedRunProgress();
        f->model->updateRunProgress(QStringLiteral("en-US"), QStringLiteral("D1"), 3, RunProgressState::done);
        f->model->updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D1"), 1, RunProgressState::running);

        QHash<QString, RunProgress> saved = f->model->runProgress();
        f->model->markRunningProgressFailed();
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).state, RunProgressState::failed);
        QCOMPARE(entry(QStringLiteral("en-US"), QStringLiteral("D2")).state, RunProgressState::queued);

        arrange(*f->model).runProgress = saved;
        f->model->markUnfinishedProgressIdle();
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).state, RunProgressState::idle);
        QCOMPARE(entry(QStringLiteral("en-US"), QStringLiteral("D2")).state, RunProgressState::idle);
    }

    // Both fronts show the grid device by device, each device's languages
    // in the project's order, named by the device's listed name.
    void cellsFollowTheProjectsOrder()
    {
        arrange(*f->model).availableDevices = {{QStringLiteral("iPhone 15"), QStringLiteral("D2"), {}, {}}};
        QStringList labels;
        for (const RunProgressCell &cell : f->model->runProgressCells())
            labels.append(cell.label() + QLatin1Char('=') + cell.key());
        QCOMPARE(labels, QStringList({"D1 / en-US=en-US|D1", "D1 / de-DE=de-DE|D1", "iPhone 15 / en-US=en-US|D2",
                                      "iPhone 15 / de-DE=de-DE|D2"}));
        QCOMPARE(RunProgressText::summary({"de-DE", "D1", 2, 3, RunProgressState::running}), QStringLiteral("2/3 running"));
    }

    void driftNoticeOnlyAfterADriftStop()
    {
        QVERIFY(!f->model->lastRunDriftNotice());
        arrange(*f->model).lastRunOutcome
            = RunOutcome{RunOutcomeKind::failed, "Generation failed", "Build failed", 0, 0};
        QVERIFY(!f->model->lastRunDriftNotice());
        arrange(*f->model).lastRunOutcome->detail = AppModel::driftStopMessage();
        QCOMPARE(f->model->lastRunDriftNotice().value_or(DriftNotice{}).heading, QStringLiteral("Drift detected"));
    }
};

VANTREL_TEST(RunProgressTest);
#include "RunProgressTest.moc"
