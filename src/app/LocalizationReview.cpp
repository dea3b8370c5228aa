#include "LocalizationReview.h"

#include "model/AppError.h"
#include "model/AppModel.h"

#include <QDir>

namespace LocalizationReview {

namespace {

LocalizationWarnings::Store storeOf(const AppModel &model)
{
    if (model.project.outputDirectory.isEmpty())
        return {};
    return LocalizationWarnings::read(model.project.outputDirectory);
}

} // namespace

QString warningsURL(const AppModel &model)
{
    return QDir(model.project.outputDirectory).filePath(LocalizationWarnings::fileName());
}

QList<LocalizationWarning> warnings(const AppModel &model) { return storeOf(model).warnings; }

QList<LocalizationWarning> activeWarnings(const AppModel &model)
{
    QList<LocalizationWarning> active;
    for (const LocalizationWarning &warning : warnings(model))
        if (!warning.dismissed)
            active.append(warning);
    return active;
}

QList<LocalizationWarning> record(AppModel &model, const QList<LocalizationWarning> &warnings)
{
    if (model.project.outputDirectory.isEmpty())
        throw AppError(QStringLiteral("The project has no output folder."));
    LocalizationWarnings::Store store = storeOf(model);
    store.warnings = warnings;
    LocalizationWarnings::applyDismissals(store);
    LocalizationWarnings::write(model.project.outputDirectory, store);
    emit model.changed();
    return store.warnings;
}

bool dismiss(AppModel &model, const QString &file, const QString &language)
{
    LocalizationWarnings::Store store = storeOf(model);
    const auto key = std::pair(file, language);
    if (!store.dismissed.contains(key))
        store.dismissed.append(key);
    try {
        if (model.project.outputDirectory.isEmpty())
            throw AppError(QStringLiteral("the project has no output folder."));
        LocalizationWarnings::write(model.project.outputDirectory, store);
    } catch (const AppError &error) {
        model.setLastError(QStringLiteral("Could not dismiss the warning: ") + error.message());
        return false;
    }
    model.clearLastError();
    emit model.changed();
    return true;
}

} // namespace LocalizationReview
