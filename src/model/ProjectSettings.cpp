// The per-project choices a front edits directly: where the screenshots go,
// how the app is launched for each language, which devices a run covers, and
// each checkpoint's launch details. Every edit is saved at once.

#include "AppModel.h"

#include <QDir>
#include <algorithm>

namespace {

// Launch waits are seconds a person types: never negative, never a day.
double clampedWait(double seconds) { return std::clamp(seconds, 0.0, 600.0); }

} // namespace

template <class T> void AppModel::editProject(T &field, const T &value)
{
    if (field == value)
        return; // an unchanged field saves nothing
    field = value;
    saveProject();
}

void AppModel::setOutputDirectory(const QString &path)
{
    const ProjectChange change(*this);
    const QString trimmed = path.trimmed();
    if (trimmed.isEmpty()) {
        setLastError(QStringLiteral("Choose a folder for the screenshots."));
        return;
    }
    editProject(m_project.outputDirectory, QDir::cleanPath(QDir(trimmed).absolutePath()));
    refreshReviewImages();
}

void AppModel::revealOutputDirectory()
{
    QDir().mkpath(m_project.outputDirectory); // a new project has made nothing yet
    platform().revealInFileViewer(m_project.outputDirectory);
}

void AppModel::toggleGenerationDevice(const QString &udid)
{
    const ProjectChange change(*this);
    QStringList devices = m_project.devices;
    if (devices.contains(udid))
        devices.removeAll(udid);
    else
        devices.append(udid); // the attached device stays first
    editProject(m_project.devices, devices);
}

void AppModel::setScreenDetails(qsizetype index, const QString &state, const QString &sampleName,
                                double launchWaitSeconds)
{
    const ProjectChange change(*this);
    if (index < 0 || index >= m_project.screens.size())
        return;
    ScreenDraft screen = m_project.screens.at(index);
    screen.state = state.trimmed();
    screen.sampleName = sampleName.trimmed();
    screen.launchWaitSeconds = clampedWait(launchWaitSeconds);
    QList<ScreenDraft> screens = m_project.screens;
    screens[index] = screen;
    editProject(m_project.screens, screens);
}
