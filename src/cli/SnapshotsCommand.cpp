// vantrel snapshots: the archive of project snapshots; archive and restore.

#include "Command.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace {

void printSnapshots(CommandContext &c, bool json)
{
    if (json) {
        QJsonArray array;
        for (const ProjectSnapshotSummary &snapshot : c.model.projectSnapshots())
            array.append(QJsonObject{
                {QStringLiteral("title"), snapshot.title},
                {QStringLiteral("subtitle"), snapshot.subtitle},
                {QStringLiteral("file"), snapshot.url},
                {QStringLiteral("modifiedAt"),
                 ReferenceDate::toDateTime(snapshot.modifiedAt).toUTC().toString(Qt::ISODate)},
            });
        c.printJson(array);
        return;
    }
    for (const ProjectSnapshotSummary &snapshot : c.model.projectSnapshots())
        c.out << QFileInfo(snapshot.url).fileName() << "  " << snapshot.title << "  (" << snapshot.subtitle << ")\n";
}

// FILE as given, or a file name inside the snapshot folder.
QString snapshotPath(const AppModel &model, const QString &file)
{
    const QFileInfo given(file);
    if (given.exists() || file.contains(QLatin1Char('/')))
        return given.absoluteFilePath();
    return model.snapshotsDirectory() + QLatin1Char('/') + file;
}

int runSnapshots(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    const QString action = c.arguments.value(0);
    if (action.isEmpty()) {
        c.model.refreshProjectSnapshots();
        printSnapshots(c, json);
        return 0;
    }
    if (action == QLatin1String("create") && c.arguments.size() == 1) {
        if (c.refuseWithoutProject(QStringLiteral("archive the current project")))
            return 1;
        if (const std::optional<QString> path = c.model.archiveProjectSnapshot()) {
            c.flushLog();
            c.out << *path << "\n";
        }
        return 0;
    }
    if (action == QLatin1String("restore") && c.arguments.size() == 2) {
        ProjectSnapshotSummary snapshot;
        snapshot.url = snapshotPath(c.model, c.arguments.at(1));
        c.model.restoreProjectSnapshot(snapshot);
        c.flushLog();
        if (!c.model.lastError())
            c.printCurrentProject();
        return 0;
    }
    return c.usageError(QStringLiteral("Usage: vantrel snapshots [--json] | create | restore FILE"));
}

} // namespace

VANTREL_COMMAND({QStringLiteral("snapshots"),
                 QStringLiteral("snapshots [--json] | snapshots create | snapshots restore FILE"),
                 QStringLiteral("Without arguments, lists the archived project snapshots, newest first.\n"
                                "  create        archives the current project and prints the snapshot's path\n"
                                "  restore FILE  makes a copy of the snapshot (a path, or a file name in the\n"
                                "                snapshot folder) the current project, with a new identity"),
                 runSnapshots, false, true});
