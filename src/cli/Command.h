#pragma once
// The `vantrel` command table. Each command group lives in its own file and
// registers itself with VANTREL_COMMAND; main() finds it by name.
//
// Every command works on a model that has loaded the saved project exactly
// as the desktop application does at start. What an operation appends to the
// run log goes to standard output; an error it leaves in lastError goes to
// standard error and makes the command exit with status 1.

#include "app/RunLogFollower.h"
#include "model/AppModel.h"

#include <QJsonDocument>
#include <QStringList>
#include <QTextStream>
#include <functional>

struct CommandContext
{
    AppModel &model;
    QStringList arguments; // after the command name
    QTextStream &out;
    QTextStream &err;

    // Removes "--flag" from the arguments and says whether it was there.
    bool takeFlag(const QString &flag);
    // Removes "--option VALUE" and returns VALUE.
    std::optional<QString> takeOption(const QString &option);
    // Writes stable, indented JSON for scripts.
    void printJson(const QJsonValue &value);
    // Prints a usage error and returns the exit status for it.
    int usageError(const QString &message);
    // Prints the run-log text added since the last flush (the whole log when
    // an operation replaced it).
    void flushLog();
    // "Current project: NAME (ID)", after an operation replaced the project.
    void printCurrentProject();

    RunLogFollower printedLog; // what of the run log is already on screen
    // The saved project could not be loaded: the model holds a blank start-up
    // project that must not be saved over the file that failed.
    bool projectLoadFailed = false;
    // Refuses an action that would act on that blank stand-in project.
    bool refuseWithoutProject(const QString &action);
};

struct Command
{
    QString name;
    QString synopsis;    // "languages [--json] | languages catalog | ..."
    QString description; // shown by --help
    std::function<int(CommandContext &)> run;
    // Commands that need no device and no derived state load only the project.
    bool needsStartupRefresh = true;
    // Library commands still run when the current project fails to load, so
    // that the user can open or restore another one from the command line.
    bool recoversFromFailedLoad = false;
    // Commands that work from their own input (a configuration file) never
    // load or save a project.
    bool usesProject = true;
};

namespace CommandTable {
int add(Command command);
const QList<Command> &all();
const Command *find(const QString &name);
}

#define VANTREL_CONCAT_INNER(a, b) a##b
#define VANTREL_CONCAT(a, b) VANTREL_CONCAT_INNER(a, b)
#define VANTREL_COMMAND(...) \
    static const int VANTREL_CONCAT(vantrelCommand, __COUNTER__) = CommandTable::add(Command __VA_ARGS__)
