#include "CheckpointReorderJournal.h"

#include "model/AppError.h"
#include "model/AtomicFile.h"
#include "model/ContainedPath.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QStringList phaseNames{QStringLiteral("parking"), QStringLiteral("placing"), QStringLiteral("restoring")};

void renameIn(const QDir &folder, const QString &from, const QString &to)
{
    QFile file(folder.filePath(from));
    if (!file.rename(folder.filePath(to)))
        throw AppError(QStringLiteral("Could not move %1 to %2: %3").arg(from, to, file.errorString()));
}

} // namespace

QString CheckpointReorderJournal::path(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral(".reorder-journal.json"));
}

void CheckpointReorderJournal::write(const QString &folder) const
{
    QJsonArray list;
    for (const Move &move : moves)
        list.append(QJsonObject{{QStringLiteral("from"), move.from},
                                {QStringLiteral("parked"), move.parked},
                                {QStringLiteral("to"), move.to}});
    const QJsonObject object{{QStringLiteral("phase"), phaseNames.at(static_cast<int>(phase))},
                             {QStringLiteral("moves"), list},
                             {QStringLiteral("after"), QJsonArray::fromStringList(after)}};
    AtomicFile::write(path(folder), QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::optional<CheckpointReorderJournal> CheckpointReorderJournal::read(const QString &folder)
{
    const std::optional<QByteArray> bytes = AtomicFile::readIfExists(path(folder));
    if (!bytes)
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(*bytes).object();
    CheckpointReorderJournal journal;
    const qsizetype phase = phaseNames.indexOf(object.value(QStringLiteral("phase")).toString());
    if (phase < 0)
        return std::nullopt;
    journal.phase = static_cast<Phase>(phase);
    for (const QJsonValue &value : object.value(QStringLiteral("moves")).toArray()) {
        const Move move{value[QStringLiteral("from")].toString(), value[QStringLiteral("parked")].toString(),
                        value[QStringLiteral("to")].toString()};
        for (const QString &name : {move.from, move.parked, move.to})
            if (ContainedPath::refusal(folder, name))
                return std::nullopt;
        journal.moves.append(move);
    }
    for (const QJsonValue &value : object.value(QStringLiteral("after")).toArray())
        journal.after.append(value.toString());
    return journal;
}

void CheckpointReorderJournal::remove(const QString &folder)
{
    QFile::remove(path(folder));
}

void CheckpointReorderJournal::finish(const QString &folder) const
{
    const QDir dir(folder);
    for (const Move &move : moves)
        if (dir.exists(move.parked))
            renameIn(dir, move.parked, move.to);
}

void CheckpointReorderJournal::undo(const QString &folder)
{
    const QDir dir(folder);
    if (phase == Phase::placing) {
        // Images already at their new names step aside again first, so
        // that none takes the old name of another.
        for (const Move &move : moves)
            if (!dir.exists(move.parked) && dir.exists(move.to))
                renameIn(dir, move.to, move.parked);
        phase = Phase::restoring;
        write(folder);
    }
    for (const Move &move : moves)
        if (dir.exists(move.parked))
            renameIn(dir, move.parked, move.from);
}
