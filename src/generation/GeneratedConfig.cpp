// The configuration file for generation from a chosen .app build by the
// command-line generator: the checks before such a run and where the file goes.

#include "ConfigWriter.h"
#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/AtomicFile.h"
#include "model/Folder.h"

#include <QFileInfo>

void AppModel::validateRunnableProject() const
{
    if (m_project.appPath.isEmpty() || !QFileInfo::exists(m_project.appPath))
        throw AppError(QStringLiteral("Choose a valid .app bundle for full generation. "
                                      "Attached simulator sessions can use Recorder > Capture Current."));
    if (m_project.bundleId.isEmpty())
        throw AppError(QStringLiteral("Bundle ID is missing."));
    if (m_project.devices.isEmpty())
        throw AppError(QStringLiteral("Select at least one simulator."));
    if (m_project.languages.isEmpty())
        throw AppError(QStringLiteral("Select at least one language."));
    if (m_project.screens.isEmpty())
        throw AppError(QStringLiteral("Add at least one screenshot screen."));
}

QString AppModel::generatedConfigURL() const
{
    return workspaceDirectory() + QStringLiteral("/generated-config.yaml");
}

QString AppModel::writeGeneratedConfig() const
{
    Folder::ensure(workspaceDirectory());
    const QString location = generatedConfigURL();
    AtomicFile::write(location, ConfigWriter::yaml(m_project).toUtf8());
    return location;
}
