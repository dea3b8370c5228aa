#include "UITestRun.h"

#include "AppLauncher.h"
#include "DeviceScreen.h"
#include "Pause.h"
#include "StateStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

UITestRun::UITestRun(const RunnerProject &project, const QString &udid, const QHash<QString, QString> &environment)
    : m_project(project), m_udid(udid), m_environment(environment)
{
    m_clock.start();
}

QString UITestRun::environmentValue(const QString &key) const
{
    const QString plain = m_environment.value(key);
    return plain.isEmpty() ? m_environment.value(QStringLiteral("TEST_RUNNER_") + key) : plain;
}

void UITestRun::note(const QString &what)
{
    m_activity.append(QStringLiteral("    t = %1s %2").arg(elapsedSeconds(), 8, 'f', 2).arg(what));
}

void UITestRun::run()
{
    note(QStringLiteral("Start Test at %1").arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs)));
    note(QStringLiteral("Set Up"));
    const auto isLaunch = [](const ReplayStep &step) { return step.kind == QLatin1String("launch"); };
    if (m_project.steps.isEmpty() || !isLaunch(m_project.steps.first())) {
        note(QStringLiteral("Activate Target Application '%1'").arg(m_project.bundleIdentifier));
        waitForForeground(15);
        Pause::scaled(0.65);
    }
    for (const ReplayStep &step : m_project.steps) {
        if (!isLaunch(step))
            waitForForeground(8);
        perform(step);
        if (step.kind != QLatin1String("wait") && step.kind != QLatin1String("screenshot") && !isLaunch(step))
            Pause::scaled(0.3);
    }
    note(QStringLiteral("Tear Down"));
}

// The app must run on the device; an app in the background comes to the
// front. One that is not running at all (never launched, terminated, a
// failed launch) fails the test after the timeout, as the assertion does.
void UITestRun::waitForForeground(double timeout)
{
    QElapsedTimer waited;
    waited.start();
    const QString bundleId = m_project.bundleIdentifier;
    for (;;) {
        bool running = false;
        StateStore::modify([&](World &world) {
            Device *device = world.device(m_udid);
            if (!device || !device->isBooted() || world.faults.isAppMissing(m_udid, bundleId) || !device->session(bundleId))
                return;
            device->foregroundApp = bundleId;
            running = true;
        });
        if (running)
            return;
        if (waited.elapsed() >= timeout * 1000 * Pause::timeScale())
            throw TestFailure{m_project.lineContaining(QStringLiteral("did not become foreground")),
                              QStringLiteral("XCTAssertTrue failed - Target app did not become foreground: "
                                             "Application '%1'")
                                  .arg(bundleId)};
        Pause::exact(qMin(0.1, timeout * Pause::timeScale()));
    }
}

void UITestRun::perform(const ReplayStep &step)
{
    const QPointF point(step.x, step.y);
    if (step.kind == QLatin1String("tap")) {
        note(QStringLiteral("Tap Coordinate at {{%1, %2}}").arg(step.x).arg(step.y));
        StateStore::modify([&](World &world) { DeviceScreen::tap(world, *world.device(m_udid), point); });
    } else if (step.kind == QLatin1String("swipe")) {
        note(QStringLiteral("Press Coordinate at {{%1, %2}} for %3s and drag to {{%4, %5}}")
                 .arg(step.x).arg(step.y).arg(qMax(step.duration, 0.05)).arg(step.endX).arg(step.endY));
        Pause::scaled(qMax(step.duration, 0.05));
        StateStore::modify([&](World &world) {
            DeviceScreen::swipe(*world.device(m_udid), point, QPointF(step.endX, step.endY));
        });
    } else if (step.kind == QLatin1String("type")) {
        note(QStringLiteral("Type '%1' into Target Application '%2'").arg(step.text, m_project.bundleIdentifier));
        std::optional<QString> problem;
        StateStore::modify([&](World &world) { problem = DeviceScreen::type(*world.device(m_udid), step.text); });
        if (problem)
            throw TestFailure{m_project.lineContaining(QStringLiteral("typeText")),
                              QStringLiteral("Failed to synthesize event: %1").arg(*problem)};
        Pause::scaled(0.04 * step.text.size());
    } else if (step.kind == QLatin1String("wait")) {
        note(QStringLiteral("Wait %1s").arg(qMax(step.duration, 0.0)));
        Pause::scaled(qMax(step.duration, 0.0));
    } else if (step.kind == QLatin1String("screenshot")) {
        screenshot(step);
    } else if (step.kind == QLatin1String("launch")) {
        launch(step);
    } else {
        throw TestFailure{m_project.lineContaining(QStringLiteral("Unsupported step kind")),
                          QStringLiteral("failed - Unsupported step kind: %1").arg(step.kind)};
    }
}

// As XCUIApplication.launch() does: a running instance ends, and the app
// starts afresh with the step's arguments (a JSON array of strings, decoded
// by the test source); the test fails when it cannot start.
void UITestRun::launch(const ReplayStep &step)
{
    const QString bundleId = m_project.bundleIdentifier;
    const int line = m_project.lineContaining(QStringLiteral("app.launch()"));
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(step.text.toUtf8(), &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isArray())
        throw TestFailure{line, QStringLiteral("failed: caught error: \"The data couldn’t be read because it isn’t "
                                               "in the correct format.\"")};
    QStringList arguments;
    for (const QJsonValue &value : document.array())
        arguments.append(value.toString());
    note(QStringLiteral("Launch Target Application '%1' with arguments %2")
             .arg(bundleId, arguments.join(QLatin1Char(' '))));

    LaunchRequest request = LaunchRequest::fromArguments(arguments);
    request.terminateRunning = true;
    std::optional<QString> problem;
    StateStore::modify([&](World &world) {
        Device *device = world.device(m_udid);
        if (!device || !device->isBooted() || world.faults.isAppMissing(m_udid, bundleId) || !device->app(bundleId)) {
            problem = QStringLiteral("Failed to launch %1: the application is not installed on the device.").arg(bundleId);
            return;
        }
        if (world.faults.launchFails(request.language)) {
            device->stopApp(bundleId);
            problem = QStringLiteral("Failed to launch %1: the application crashed during launch (signal 6, abort).")
                          .arg(bundleId);
            return;
        }
        AppLauncher::start(world, *device, bundleId, request);
    });
    if (problem)
        throw TestFailure{line, *problem};
    waitForForeground(15);
    Pause::scaled(qMax(step.duration, 0.0));
}

void UITestRun::screenshot(const ReplayStep &step)
{
    Pause::scaled(0.45);
    const QString path = screenshotPath(step.outputPath);
    note(QStringLiteral("Taking Screenshot of Main Screen to %1").arg(path));
    const auto fileError = [&](const QString &reason) {
        return TestFailure{m_project.lineContaining(QStringLiteral("createDirectory")),
                           QStringLiteral("failed: caught error: \"The file “%1” couldn’t be saved in the folder “%2”. %3\"")
                               .arg(QFileInfo(path).fileName(), QFileInfo(path).absolutePath(), reason)};
    };
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        throw fileError(QStringLiteral("The folder could not be created."));
    const World world = StateStore::read();
    if (world.faults.noScreenshots)
        return; // a test that "passes" without leaving its pictures
    const Device *device = world.device(m_udid);
    const QImage image = DeviceScreen::render(*device, world.faults);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !image.save(&file, "PNG") || !file.commit())
        throw fileError(file.errorString());
    recordProgress(step.outputPath);
}

QString UITestRun::screenshotPath(const QString &rawPath) const
{
    if (rawPath.startsWith(QLatin1Char('/')))
        return rawPath;
    const QString outputDirectory = environmentValue(m_project.outputDirectoryKey);
    if (!outputDirectory.isEmpty())
        return QDir::cleanPath(outputDirectory + QLatin1Char('/') + rawPath);
    QFile marker(m_project.outputDirectoryFilePath);
    if (marker.open(QIODevice::ReadOnly)) {
        const QString directory = QString::fromUtf8(marker.readAll()).trimmed();
        if (!directory.isEmpty())
            return QDir::cleanPath(directory + QLatin1Char('/') + rawPath);
    }
    return QDir::current().absoluteFilePath(rawPath);
}

void UITestRun::recordProgress(const QString &outputPath) const
{
    const QString progressFile = environmentValue(m_project.progressKey);
    if (progressFile.isEmpty())
        return;
    QFile file(progressFile);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(outputPath.toUtf8() + '\n');
}
