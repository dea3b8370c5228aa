#pragma once
// The review's side of the localization check: the warnings a run left
// beside its screenshots ("localization-warnings.json" in the project's
// output folder), read fresh on every call (a small file), and their
// dismissal. Both fronts call these; main thread only.

#include "app/LocalizationWarning.h"

#include <QList>
#include <QString>

class AppModel;

namespace LocalizationReview {

QString warningsURL(const AppModel &model);
// Every warning of the last run, dismissed ones marked.
QList<LocalizationWarning> warnings(const AppModel &model);
QList<LocalizationWarning> activeWarnings(const AppModel &model); // not dismissed
// Stores a run's warnings, keeping earlier dismissals; returns them with
// the dismissals applied. Throws AppError.
QList<LocalizationWarning> record(AppModel &model, const QList<LocalizationWarning> &warnings);
// Hides the warning of this checkpoint file and language for good (every
// device). False, with lastError set, when it cannot be stored.
bool dismiss(AppModel &model, const QString &file, const QString &language);

} // namespace LocalizationReview
