#include "Command.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>

bool CommandContext::takeFlag(const QString &flag)
{
    return arguments.removeAll(flag) > 0;
}

std::optional<QString> CommandContext::takeOption(const QString &option)
{
    const qsizetype index = arguments.indexOf(option);
    if (index < 0 || index + 1 >= arguments.size())
        return std::nullopt;
    const QString value = arguments.at(index + 1);
    arguments.remove(index, 2);
    return value;
}

void CommandContext::printJson(const QJsonValue &value)
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    out << QString::fromUtf8(document.toJson(QJsonDocument::Indented));
    out.flush();
}

int CommandContext::usageError(const QString &message)
{
    err << message << "\n";
    return 2;
}

bool CommandContext::refuseWithoutProject(const QString &action)
{
    if (!projectLoadFailed)
        return false;
    err << "Cannot " << action << " while the current project cannot be loaded. Open another project with "
        << "'vantrel projects open ID' or restore one with 'vantrel snapshots restore FILE'.\n";
    return true;
}

void CommandContext::flushLog()
{
    const RunLogFollower::Update update = printedLog.take(model.runLog());
    if (update.text.isEmpty())
        return;
    out << update.text;
    out.flush();
}

void CommandContext::printCurrentProject()
{
    out << "Current project: " << AppModel::displayName(model.project()) << " ("
        << model.project().projectID.value_or(QString()) << ")\n";
}

namespace CommandTable {

static QList<Command> &table()
{
    static QList<Command> commands;
    return commands;
}

int add(Command command)
{
    table().append(std::move(command));
    std::stable_sort(table().begin(), table().end(),
                     [](const Command &a, const Command &b) { return a.name < b.name; });
    return static_cast<int>(table().size());
}

const QList<Command> &all() { return table(); }

const Command *find(const QString &name)
{
    for (const Command &command : table())
        if (command.name == name)
            return &command;
    return nullptr;
}

} // namespace CommandTable
