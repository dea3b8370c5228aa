// Progress bookkeeping of a run: totals, clamping, and how the endings
// change the states.

#include "ModelFixture.h"
#include "TestSupport.h"
#include "model/AppModel.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QTest>

class RunProgressTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<AppModel> m_model;

    RunProgress entry(const QString &language, const QString &device = QStringLiteral("D1")) const
    {
        return m_model->runProgress().value(RunProgress::key(language, device));
    }

private slots:
    void init()
    {
        m_root = std::make_unique<QTemporaryDir>();
        m_model = std::make_unique<AppModel>(m_root->path(), std::make_unique<ScriptedPlatformServices>());
        arrange(*m_model).project.devices = {QStringLiteral("D1"), QStringLiteral("D2")};
        arrange(*m_model).project.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE")};
        arrange(*m_model).project.screens = QList<ScreenDraft>(3);
    }

    void countsAreClampedIntoTheTotal()
    {
        arrange(*m_model).runProgress = m_model->initializedRunProgress();
        for (int i = 0; i < 5; ++i) // more lines than screens
            m_model->incrementRunProgress(QStringLiteral("en-US"), QStringLiteral("D1"));
        QCOMPARE(entry(QStringLiteral("en-US")).completed, 3);
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::running);
        m_model->updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D1"), -2, RunProgressState::running);
        QCOMPARE(entry(QStringLiteral("de-DE")).completed, 0);
        m_model->updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D1"), 9, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).completed, 3);
        QCOMPARE(m_model->completedRunProgressCount(), 6);
    }

    void endingsChangeOnlyUnfinishedPairs()
    {
        arrange(*m_model).runProgress = m_model->initializedRunProgress();
        m_model->updateRunProgress(QStringLiteral("en-US"), QStringLiteral("D1"), 3, RunProgressState::done);
        m_model->updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D1"), 1, RunProgressState::running);

        QHash<QString, RunProgress> saved = m_model->runProgress();
        m_model->markRunningProgressFailed();
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).state, RunProgressState::failed);
        QCOMPARE(entry(QStringLiteral("en-US"), QStringLiteral("D2")).state, RunProgressState::queued);

        arrange(*m_model).runProgress = saved;
        m_model->markUnfinishedProgressIdle();
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).state, RunProgressState::idle);
        QCOMPARE(entry(QStringLiteral("en-US"), QStringLiteral("D2")).state, RunProgressState::idle);
    }

    // Both fronts show the grid device by device, each device's languages
    // in the project's order, named by the device's listed name.
    void cellsFollowTheProjectsOrder()
    {
        arrange(*m_model).availableDevices = {{QStringLiteral("iPhone 15"), QStringLiteral("D2"), {}, {}}};
        QStringList labels;
        for (const RunProgressCell &cell : m_model->runProgressCells())
            labels.append(cell.label() + QLatin1Char('=') + cell.key());
        QCOMPARE(labels, QStringList({"D1 / en-US=en-US|D1", "D1 / de-DE=de-DE|D1", "iPhone 15 / en-US=en-US|D2",
                                      "iPhone 15 / de-DE=de-DE|D2"}));
        QCOMPARE(RunProgressText::summary({"de-DE", "D1", 2, 3, RunProgressState::running}), QStringLiteral("2/3 running"));
    }

    void driftNoticeOnlyAfterADriftStop()
    {
        QVERIFY(!m_model->lastRunDriftNotice());
        arrange(*m_model).lastRunOutcome
            = RunOutcome{RunOutcomeKind::failed, "Generation failed", "Build failed", 0, 0};
        QVERIFY(!m_model->lastRunDriftNotice());
        arrange(*m_model).lastRunOutcome->detail = AppModel::driftStopMessage();
        QCOMPARE(m_model->lastRunDriftNotice().value_or(DriftNotice{}).heading, QStringLiteral("Drift detected"));
    }
};

VANTREL_TEST(RunProgressTest);
#include "RunProgressTest.moc"
