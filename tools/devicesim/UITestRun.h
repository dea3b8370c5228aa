#pragma once
// The UI test of a replay runner project, run against a simulated device:
// it does what the generated test source does (bring the app to the front,
// or launch it with a launch step's arguments, then tap, swipe, type, wait
// and take screenshots step by step, reporting
// each screenshot in the progress file), with the waits of the real test
// shortened by the time scale.

#include "RunnerProject.h"

#include <QElapsedTimer>
#include <QHash>

// A failed assertion or a thrown error inside the test method.
struct TestFailure
{
    int line = 1;
    QString message;
};

class UITestRun
{
public:
    // `environment` is the build tool's environment (the test sees it, also
    // in the TEST_RUNNER_-prefixed form).
    UITestRun(const RunnerProject &project, const QString &udid, const QHash<QString, QString> &environment);

    // Runs the test method; throws TestFailure or Pause::Interrupted.
    void run();
    // What the test did, as the build tool's log shows it ("t = 1.20s Tap ...").
    const QStringList &activity() const { return m_activity; }
    double elapsedSeconds() const { return m_clock.elapsed() / 1000.0; }

private:
    QString environmentValue(const QString &key) const;
    void note(const QString &what);
    void waitForForeground(double timeout);
    void perform(const ReplayStep &step);
    void launch(const ReplayStep &step);
    void screenshot(const ReplayStep &step);
    QString screenshotPath(const QString &rawPath) const;
    void recordProgress(const QString &outputPath) const;

    const RunnerProject &m_project;
    QString m_udid;
    QHash<QString, QString> m_environment;
    QStringList m_activity;
    QElapsedTimer m_clock;
};
