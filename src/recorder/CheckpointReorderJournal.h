#pragma once
// Renumbering checkpoint images moves every image twice: first aside under
// a hidden name, then to its new number. A process killed in between must
// not lose an image, nor let a retry of the same command overwrite one. So
// the plan is written first, into the folder itself, as a hidden journal;
// the next start (under the workspace lock) reads it and either finishes
// the renumbering, when the project was already saved with the new names,
// or puts every image back where it was. Nothing is ever deleted.

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

struct CheckpointReorderJournal
{
    // One image: its name before, its hidden name in between, its new name.
    struct Move
    {
        QString from;
        QString parked;
        QString to;
    };
    enum class Phase { parking, placing, restoring };

    Phase phase = Phase::parking;
    QList<Move> moves;
    QStringList after; // every checkpoint's file name once the renumbering is saved, in order

    static QString path(const QString &folder); // folder/.reorder-journal.json
    // Throws AppError when it cannot be written.
    void write(const QString &folder) const;
    // Nothing when there is none, or when it cannot be read or names a file
    // outside the folder (then it is not acted on).
    static std::optional<CheckpointReorderJournal> read(const QString &folder);
    static void remove(const QString &folder);

    // Moves the images to their new names (the project already has them).
    void finish(const QString &folder) const; // throws AppError
    // Moves the images back to their old names.
    void undo(const QString &folder); // throws AppError
};
