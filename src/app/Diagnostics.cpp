// The diagnostics file a user sends when something went wrong: what the
// project is set up for, followed by the whole run log.

#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/AtomicFile.h"
#include "model/Folder.h"

#include <QDateTime>

namespace {

QString simulatorLine(const ScreenshotProject &project)
{
    if (project.attachedDeviceName)
        return *project.attachedDeviceName;
    return project.devices.isEmpty() ? QStringLiteral("none") : project.devices.first();
}

QString diagnosticsText(const ScreenshotProject &project, const QString &runLog)
{
    return QStringLiteral("Vantrel Diagnostics\n")
           + QStringLiteral("Generated at: ") + QDateTime::currentDateTime().toString() + QLatin1Char('\n')
           + QStringLiteral("Simulator: ") + simulatorLine(project) + QLatin1Char('\n')
           + QStringLiteral("App: ") + project.appName + QLatin1Char(' ') + project.bundleId + QLatin1Char('\n')
           + QStringLiteral("Languages: ") + project.languages.join(QStringLiteral(", ")) + QLatin1Char('\n')
           + QStringLiteral("Checkpoints: %1\n\n").arg(project.screens.size())
           + runLog;
}

} // namespace

std::optional<QString> AppModel::writeDiagnostics()
{
    const QString path = workspaceDirectory() + QStringLiteral("/diagnostics.txt");
    try {
        Folder::ensure(workspaceDirectory());
        AtomicFile::write(path, diagnosticsText(m_project, m_runLog).toUtf8());
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not export diagnostics: ") + error.message());
        return std::nullopt;
    }
    return path;
}

void AppModel::exportDiagnostics()
{
    if (const std::optional<QString> path = writeDiagnostics())
        platform().revealInFileViewer(*path);
}
