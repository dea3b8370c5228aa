// The review's side of the localization check: the warnings a run left
// beside its screenshots, read fresh on every call (a small file), and their
// dismissal.

#include "model/AppError.h"
#include "model/AppModel.h"

#include <QDir>

namespace {

LocalizationWarnings::Store storeOf(const ScreenshotProject &project)
{
    if (project.outputDirectory.isEmpty())
        return {};
    return LocalizationWarnings::read(project.outputDirectory);
}

} // namespace

QString AppModel::localizationWarningsURL() const
{
    return QDir(m_project.outputDirectory).filePath(LocalizationWarnings::fileName());
}

QList<LocalizationWarning> AppModel::localizationWarnings() const { return storeOf(m_project).warnings; }

QList<LocalizationWarning> AppModel::activeLocalizationWarnings() const
{
    QList<LocalizationWarning> active;
    for (const LocalizationWarning &warning : localizationWarnings())
        if (!warning.dismissed)
            active.append(warning);
    return active;
}

QList<LocalizationWarning> AppModel::recordLocalizationWarnings(const QList<LocalizationWarning> &warnings)
{
    assertMainThread();
    if (m_project.outputDirectory.isEmpty())
        throw AppError(QStringLiteral("The project has no output folder."));
    LocalizationWarnings::Store store = storeOf(m_project);
    store.warnings = warnings;
    LocalizationWarnings::applyDismissals(store);
    LocalizationWarnings::write(m_project.outputDirectory, store);
    notifyChanged();
    return store.warnings;
}

bool AppModel::dismissLocalizationWarning(const QString &file, const QString &language)
{
    assertMainThread();
    LocalizationWarnings::Store store = storeOf(m_project);
    const auto key = std::pair(file, language);
    if (!store.dismissed.contains(key))
        store.dismissed.append(key);
    try {
        if (m_project.outputDirectory.isEmpty())
            throw AppError(QStringLiteral("the project has no output folder."));
        LocalizationWarnings::write(m_project.outputDirectory, store);
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not dismiss the warning: ") + error.message());
        return false;
    }
    clearLastError();
    notifyChanged();
    return true;
}
