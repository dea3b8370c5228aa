// vantrel projects: the library of local projects; open, rename, delete, start anew.

#include "Command.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QString dateText(ReferenceSeconds seconds)
{
    return ReferenceDate::toDateTime(seconds).toUTC().toString(Qt::ISODate);
}

bool isCurrent(const AppModel &model, const ProjectLibraryItem &item)
{
    return model.project().projectID == item.id;
}

void printLibrary(CommandContext &c, bool json)
{
    if (json) {
        QJsonArray array;
        for (const ProjectLibraryItem &item : c.model.projectLibrary())
            array.append(QJsonObject{
                {QStringLiteral("id"), item.id},
                {QStringLiteral("title"), item.title},
                {QStringLiteral("subtitle"), item.subtitle},
                {QStringLiteral("file"), item.url},
                {QStringLiteral("modifiedAt"), dateText(item.modifiedAt)},
                {QStringLiteral("appName"), item.appName},
                {QStringLiteral("bundleId"), item.bundleId},
                {QStringLiteral("checkpointCount"), item.checkpointCount},
                {QStringLiteral("languageCount"), item.languageCount},
                {QStringLiteral("current"), isCurrent(c.model, item)},
                {QStringLiteral("readable"), item.isReadable},
            });
        c.printJson(array);
        return;
    }
    for (const ProjectLibraryItem &item : c.model.projectLibrary())
        c.out << (isCurrent(c.model, item) ? "* " : "  ") << item.title << "  (" << item.subtitle << ")  "
              << item.id << "\n";
}

// The library entry with this identity, or the only one it begins.
std::optional<ProjectLibraryItem> findItem(const AppModel &model, const QString &id)
{
    QList<ProjectLibraryItem> matches;
    for (const ProjectLibraryItem &item : model.projectLibrary()) {
        if (item.id.compare(id, Qt::CaseInsensitive) == 0)
            return item;
        if (!id.isEmpty() && item.id.startsWith(id, Qt::CaseInsensitive))
            matches.append(item);
    }
    return matches.size() == 1 ? std::optional(matches.first()) : std::nullopt;
}

int runProjects(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    const QString action = c.arguments.value(0);
    const QStringList rest = c.arguments.mid(1);
    if (action.isEmpty()) {
        printLibrary(c, json);
        return 0;
    }
    if (action == QLatin1String("new") && c.refuseWithoutProject(QStringLiteral("start a new project")))
        return 1;
    if (action == QLatin1String("rename") && c.refuseWithoutProject(QStringLiteral("rename the current project")))
        return 1;
    if (action == QLatin1String("new")) {
        c.model.startNewProject(rest.join(QLatin1Char(' ')));
        c.flushLog();
        if (!c.model.lastError())
            c.printCurrentProject();
        return 0;
    }
    if (action == QLatin1String("rename") && !rest.isEmpty()) {
        c.model.renameCurrentProject(rest.join(QLatin1Char(' ')));
        if (!c.model.lastError())
            c.out << "Renamed project to " << AppModel::displayName(c.model.project()) << ".\n";
        return 0;
    }
    if ((action == QLatin1String("open") || action == QLatin1String("delete")) && rest.size() == 1) {
        const std::optional<ProjectLibraryItem> item = findItem(c.model, rest.first());
        if (!item) {
            c.err << "No project in the library has the identity " << rest.first()
                  << ". Run 'vantrel projects' for the list.\n";
            return 1;
        }
        if (action == QLatin1String("open")) {
            c.model.openProject(*item);
            return 0;
        }
        const bool wasCurrent = isCurrent(c.model, *item);
        c.model.deleteProject(*item);
        if (c.model.lastError())
            return 0;
        if (!wasCurrent) {
            c.out << "Deleted project: " << item->title << "\n";
        } else {
            c.flushLog(); // which project took its place
            c.printCurrentProject();
        }
        return 0;
    }
    return c.usageError(QStringLiteral(
        "Usage: vantrel projects [--json] | new [NAME] | open ID | rename NAME | delete ID"));
}

} // namespace

VANTREL_COMMAND({QStringLiteral("projects"),
                 QStringLiteral("projects [--json] | projects new [NAME] | projects open ID | "
                                "projects rename NAME | projects delete ID"),
                 QStringLiteral("Without arguments, lists the local projects, newest first; * marks the current one.\n"
                                "  new [NAME]   archives the current project as a snapshot and starts a blank one\n"
                                "  open ID      makes a library project current (ID or its unique beginning)\n"
                                "  rename NAME  renames the current project\n"
                                "  delete ID    moves a project (and its output folder inside the output root)\n"
                                "               to the Trash; deleting the current one opens the next or\n"
                                "               starts a blank project"),
                 runProjects, false, true});
