// Progress bookkeeping of a run: totals, clamping, and how the endings
// change the states.

#include "TestSupport.h"
#include "model/AppError.h"
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
        return m_model->runProgress.value(RunProgress::key(language, device));
    }

private slots:
    void init()
    {
        m_root = std::make_unique<QTemporaryDir>();
        m_model = std::make_unique<AppModel>(m_root->path(), std::make_unique<ScriptedPlatformServices>());
        m_model->project.devices = {QStringLiteral("D1"), QStringLiteral("D2")};
        m_model->project.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE")};
        m_model->project.screens = QList<ScreenDraft>(3);
    }

    void startsQueuedForEveryPair()
    {
        m_model->runProgress = m_model->initializedRunProgress();
        QCOMPARE(m_model->runProgress.size(), 4);
        QCOMPARE(m_model->runProgress.value(QStringLiteral("de-DE|D2")),
                 (RunProgress{QStringLiteral("de-DE"), QStringLiteral("D2"), 0, 3, RunProgressState::queued}));
    }

    void totalIsOneWithoutScreens()
    {
        m_model->project.screens.clear();
        QCOMPARE(m_model->initializedRunProgress().value(QStringLiteral("en-US|D1")).total, 1);
        m_model->incrementRunProgress(QStringLiteral("fr"), QStringLiteral("D9"));
        QCOMPARE(entry(QStringLiteral("fr"), QStringLiteral("D9")).total, 1);
    }

    void countsAreClampedIntoTheTotal()
    {
        m_model->runProgress = m_model->initializedRunProgress();
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
        m_model->runProgress = m_model->initializedRunProgress();
        m_model->updateRunProgress(QStringLiteral("en-US"), QStringLiteral("D1"), 3, RunProgressState::done);
        m_model->updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D1"), 1, RunProgressState::running);

        QHash<QString, RunProgress> saved = m_model->runProgress;
        m_model->markRunningProgressFailed();
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).state, RunProgressState::failed);
        QCOMPARE(entry(QStringLiteral("en-US"), QStringLiteral("D2")).state, RunProgressState::queued);

        m_model->runProgress = saved;
        m_model->markUnfinishedProgressIdle();
        QCOMPARE(entry(QStringLiteral("en-US")).state, RunProgressState::done);
        QCOMPARE(entry(QStringLiteral("de-DE")).state, RunProgressState::idle);
        QCOMPARE(entry(QStringLiteral("en-US"), QStringLiteral("D2")).state, RunProgressState::idle);
    }

    void cancellingTwiceLogsTwiceAndStaysCancelled()
    {
        m_model->runProgress = m_model->initializedRunProgress();
        m_model->updateRunProgress(QStringLiteral("en-US"), QStringLiteral("D1"), 2, RunProgressState::running);
        m_model->cancelRun();
        m_model->cancelRun();
        QCOMPARE(m_model->runLog.count(QStringLiteral("Cancel requested.\n")), 2);
        QCOMPARE(m_model->lastRunOutcome->kind, RunOutcomeKind::cancelled);
        QCOMPARE(m_model->lastRunOutcome->title, QStringLiteral("Generation cancelled"));
        QCOMPARE(m_model->lastRunOutcome->detail, QStringLiteral("2 of 12 screenshots completed."));
        QVERIFY(!m_model->isRunning);
    }

    void validationMessagesComeInOrder_data()
    {
        QTest::addColumn<QString>("breakWhat");
        QTest::addColumn<QString>("message");
        QTest::newRow("bundle") << "bundleId"
                                << "Select the installed app bundle ID before running recorded automation.";
        QTest::newRow("devices") << "devices" << "Attach to a booted simulator or select a device.";
        QTest::newRow("languages") << "languages" << "Select at least one language.";
        QTest::newRow("screens") << "screens" << "Record at least one checkpoint first.";
        QTest::newRow("replay issue") << "issue"
                                      << "Checkpoint 02 has no recorded tap, swipe, or typed text. Click or drag "
                                         "inside the real Simulator window before saving each later checkpoint.";
    }

    void validationMessagesComeInOrder()
    {
        QFETCH(QString, breakWhat);
        QFETCH(QString, message);
        ScreenshotProject &p = m_model->project;
        p.bundleId = QStringLiteral("com.example.demo");
        if (breakWhat == "bundleId")
            p = ScreenshotProject{};
        if (breakWhat == "devices")
            p.devices.clear();
        if (breakWhat == "languages")
            p.languages.clear();
        if (breakWhat == "screens")
            p.screens.clear();
        // Otherwise the second of the three screens has no action.
        try {
            m_model->validateRecordedAttachedProject();
            QFAIL("validation passed");
        } catch (const AppError &error) {
            QCOMPARE(error.message(), message);
        }
    }
};

VANTREL_TEST(RunProgressTest);
#include "RunProgressTest.moc"
