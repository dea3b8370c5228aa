// vantrel: the command-line front of Vantrel. It drives the same model as the
// desktop application, so every user action can be scripted and tested.

#include "Command.h"
#include "app/Interrupts.h"

#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

void printUsage(QTextStream &out)
{
    out << "Usage: vantrel [--root DIR] COMMAND [ARGUMENTS]\n"
           "\n"
           "Makes localized App Store screenshots of an iOS app: attach a running\n"
           "Simulator, record a flow once, generate it for every language.\n"
           "\n"
           "Options:\n"
           "  --root DIR   keep projects and output under DIR (also: VANTREL_HOME)\n"
           "  --help       show this help, or a command's help after its name\n"
           "  --version    show the version\n"
           "\n"
           "Commands:\n";
    for (const Command &command : CommandTable::all())
        out << "  " << command.synopsis << "\n";
    out << "\nRun 'vantrel COMMAND --help' for a command's details.\n";
}

void printCommandHelp(QTextStream &out, const Command &command)
{
    out << "Usage: vantrel " << command.synopsis << "\n\n" << command.description << "\n";
}

} // namespace

int main(int argc, char **argv)
{
    // A closed standard input would give its number to the next file this
    // process opens, and a command reading its input would read that file.
    if (::fcntl(STDIN_FILENO, F_GETFD) == -1)
        ::open("/dev/null", O_RDONLY);
    Interrupts::install(); // before any thread starts
    QCoreApplication app(argc, argv);
    Interrupts interrupts;
    QCoreApplication::setApplicationName(QStringLiteral("Vantrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VANTREL_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);

    QStringList arguments = QCoreApplication::arguments().mid(1);
    std::optional<QString> root;
    if (qEnvironmentVariableIsSet("VANTREL_HOME"))
        root = qEnvironmentVariable("VANTREL_HOME");
    while (!arguments.isEmpty() && arguments.first().startsWith(QLatin1String("--"))) {
        const QString option = arguments.takeFirst();
        if (option == QLatin1String("--help")) {
            printUsage(out);
            return 0;
        }
        if (option == QLatin1String("--version")) {
            out << "vantrel " << VANTREL_VERSION << "\n";
            return 0;
        }
        if (option == QLatin1String("--root")) {
            if (arguments.isEmpty()) {
                err << "vantrel: --root needs a folder\n";
                return 2;
            }
            root = arguments.takeFirst();
        } else if (option.startsWith(QLatin1String("--root="))) {
            root = option.mid(7);
        } else {
            err << "vantrel: unknown option " << option << "\n";
            return 2;
        }
    }
    if (arguments.isEmpty()) {
        printUsage(err);
        return 2;
    }

    const QString name = arguments.takeFirst();
    const Command *command = CommandTable::find(name);
    if (!command) {
        err << "vantrel: unknown command '" << name << "'. Run 'vantrel --help' for the list.\n";
        return 2;
    }
    if (arguments.contains(QLatin1String("--help"))) {
        printCommandHelp(out, *command);
        return 0;
    }

    AppModel model(root);
    CommandContext context{model, arguments, out, err};

    if (!command->usesProject) {
        const int status = command->run(context);
        out.flush();
        return status;
    }
    const bool loaded = model.loadSavedProject();
    if (loaded && model.lastError()) {
        // The project loaded but could not be written back (a read-only
        // workspace, say): every command still works on it, and a command
        // that changes it reports its own failed save.
        err << *model.lastError() << "\n";
        model.clearLastError();
    } else if (!loaded) {
        err << *model.lastError() << "\n";
        if (!command->recoversFromFailedLoad) {
            if (!model.projectLibrary().isEmpty())
                err << "Nothing was written over it. 'vantrel projects' lists the other projects and "
                       "'vantrel projects open ID' opens one.\n";
            return 1;
        }
        context.projectLoadFailed = true;
        model.clearLastError();
    }
    if (command->needsStartupRefresh) {
        model.refreshAfterLoad();
        // A start-up refresh that fails (no simulator tools, say) does not stop
        // a command that may not need them; the command reports its own errors.
        if (model.lastError()) {
            err << "note: " << *model.lastError() << "\n";
            model.clearLastError();
        }
    }
    context.printedLog = RunLogFollower(model.runLog());

    const int status = Interrupts::received() ? Interrupts::exitStatus : command->run(context);
    context.flushLog();
    out.flush();
    interrupts.commandFinished();
    if (Interrupts::received()) {
        // A cancelled generation has said so itself.
        if (status != Interrupts::exitStatus)
            err << "Interrupted.\n";
        return Interrupts::exitStatus;
    }
    if (model.lastError()) {
        err << *model.lastError() << "\n";
        return status == 0 ? 1 : status;
    }
    return status;
}
