// Setting what the generator configuration carries, field by field, so that
// nobody edits the project document by hand: waits, reset and Simulator
// choices, launch arguments and their names, and each screen's name, state,
// sample name and wait. Each one is a change of the shared project, made
// under the workspace lock on the newest saved copy.

#include "model/AppModel.h"
#include "model/UuidText.h"

#include <algorithm>
#include <cmath>

namespace {

std::optional<QString> waitProblem(double seconds)
{
    if (!std::isfinite(seconds) || seconds < 0)
        return QStringLiteral("The launch wait must be zero or more seconds.");
    return std::nullopt;
}

// Names are written after a dash ("-" + name), as the app reads them.
std::optional<QString> argumentNameProblem(const QString &name)
{
    if (name.startsWith(QLatin1Char('-')))
        return QStringLiteral("Give the argument name without its leading dash, such as vantrel.screen.");
    if (std::any_of(name.begin(), name.end(), [](QChar c) { return c.isSpace(); }))
        return QStringLiteral("An argument name cannot contain spaces.");
    return std::nullopt;
}

std::optional<QString> screenProblem(const ScreenshotProject &project, qint64 number)
{
    if (number >= 1 && number <= project.screens.size())
        return std::nullopt;
    return QStringLiteral("There is no screen %1; the project has %2.").arg(number).arg(project.screens.size());
}

void save(AppModel &model)
{
    if (model.saveProject())
        model.clearLastError();
}

} // namespace

void AppModel::setLaunchWaitSeconds(double seconds)
{
    const ProjectChange change(*this);
    if (const auto problem = waitProblem(seconds))
        return setLastError(*problem);
    m_project.launchWaitSeconds = seconds;
    save(*this);
}

void AppModel::setResetAppData(bool reset)
{
    const ProjectChange change(*this);
    m_project.resetAppData = reset;
    save(*this);
}

void AppModel::setOpenSimulator(bool open)
{
    const ProjectChange change(*this);
    m_project.openSimulator = open;
    save(*this);
}

void AppModel::setGlobalLaunchArguments(const QStringList &arguments)
{
    const ProjectChange change(*this);
    m_project.globalLaunchArguments = arguments;
    save(*this);
}

void AppModel::setStateArgumentName(const QString &name)
{
    const ProjectChange change(*this);
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return setLastError(QStringLiteral("The state argument name cannot be empty; the usual one is ")
                            + ScreenshotProject::defaultStateArgumentName + QLatin1Char('.'));
    if (const auto problem = argumentNameProblem(trimmed))
        return setLastError(*problem);
    m_project.stateArgumentName = trimmed;
    save(*this);
}

void AppModel::setSampleNameArgumentName(const QString &name)
{
    const ProjectChange change(*this);
    const QString trimmed = name.trimmed();
    if (const auto problem = argumentNameProblem(trimmed))
        return setLastError(*problem);
    m_project.sampleNameArgumentName = trimmed;
    save(*this);
}

void AppModel::addScreen(const QString &name)
{
    const ProjectChange change(*this);
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return setLastError(QStringLiteral("A screen needs a name."));
    if (m_isRecordingFlow)
        return setLastError(QStringLiteral("Stop recording before adding a screen; a recording adds its own "
                                           "screens with each checkpoint."));
    const qint64 number = m_project.screens.size() + 1;
    m_project.screens.append(ScreenDraft{.id = UuidText::create(), .name = trimmed});
    const QList<ManualScreenDraft> checkpoints = manualScreens();
    if (std::none_of(checkpoints.begin(), checkpoints.end(),
                     [number](const ManualScreenDraft &c) { return c.index == number; })) {
        QList<ManualScreenDraft> updated = checkpoints;
        updated.append(ManualScreenDraft{UuidText::create(), number, trimmed, std::nullopt});
        m_project.manualScreens = updated;
    }
    // The next recorded checkpoint takes the next number.
    m_project.manualCaptureIndex = std::max(nextManualCaptureIndex(), number + 1);
    save(*this);
}

void AppModel::renameScreen(qint64 number, const QString &name)
{
    const ProjectChange change(*this);
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return setLastError(QStringLiteral("A screen needs a name."));
    if (const auto problem = screenProblem(m_project, number))
        return setLastError(*problem);
    // The checkpoint of the same number carries the name in its image's
    // file name: renaming it renames both, the way the desktop does.
    const QList<ManualScreenDraft> checkpoints = manualScreens();
    const auto checkpoint = std::find_if(checkpoints.begin(), checkpoints.end(),
                                         [number](const ManualScreenDraft &c) { return c.index == number; });
    if (checkpoint != checkpoints.end())
        return renameCheckpoint(*checkpoint, trimmed);
    m_project.screens[number - 1].name = trimmed;
    save(*this);
}

void AppModel::setScreenState(qint64 number, const QString &state)
{
    const ProjectChange change(*this);
    if (const auto problem = screenProblem(m_project, number))
        return setLastError(*problem);
    m_project.screens[number - 1].state = state.trimmed();
    save(*this);
}

void AppModel::setScreenSampleName(qint64 number, const QString &sampleName)
{
    const ProjectChange change(*this);
    if (const auto problem = screenProblem(m_project, number))
        return setLastError(*problem);
    m_project.screens[number - 1].sampleName = sampleName.trimmed();
    save(*this);
}

void AppModel::setScreenLaunchWaitSeconds(qint64 number, double seconds)
{
    const ProjectChange change(*this);
    if (const auto problem = screenProblem(m_project, number))
        return setLastError(*problem);
    if (const auto problem = waitProblem(seconds))
        return setLastError(*problem);
    m_project.screens[number - 1].launchWaitSeconds = seconds;
    save(*this);
}
