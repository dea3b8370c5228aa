#pragma once
// Screenshots that look the same as the run's first language, kept beside
// the screenshots in "localization-warnings.json" so that the review can
// show them after the run.
//
// Dismissals are kept in that same file, not in the project document: they
// are a verdict on the app's output (a screen of names only, or a language
// the app deliberately shows in its base language), belong with the pictures
// they are about, and a project without a run has nothing to dismiss. A new
// run rewrites the warnings but keeps the dismissals, so a warning dismissed
// once stays dismissed for that checkpoint and language.

#include <QList>
#include <QString>

struct LocalizationWarning
{
    QString language;
    QString firstLanguage;
    QString deviceName;
    QString file; // the checkpoint's file name, e.g. 01-trips.png
    bool dismissed = false;

    // "<language> <device>/<file> looks the same as <first language>: ..."
    QString text() const;
    bool operator==(const LocalizationWarning &) const = default;
};

namespace LocalizationWarnings {

QString fileName(); // "localization-warnings.json"

struct Store
{
    QList<LocalizationWarning> warnings; // dismissed flags already applied
    // Checkpoint file name and language of every dismissed warning.
    QList<std::pair<QString, QString>> dismissed;
};

// The store in the output folder; empty when there is none or it cannot be read.
Store read(const QString &outputDirectory);
// Writes it atomically; throws AppError.
void write(const QString &outputDirectory, const Store &store);
// Marks the warnings that a dismissal covers.
void applyDismissals(Store &store);

} // namespace LocalizationWarnings
