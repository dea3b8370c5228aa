// vantrel config: writes the configuration file that the command-line
// generator reads, generation from a chosen .app build.

#include "Command.h"

#include "model/AppError.h"

namespace {

int runConfig(CommandContext &c)
{
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("config takes no arguments."));
    QString path;
    try {
        path = c.model.writeGeneratedConfig();
    } catch (const AppError &error) {
        c.err << error.message() << "\n";
        return 1;
    }
    c.out << path << "\n";
    // The file is written either way; say what a generator run would refuse.
    try {
        c.model.validateRunnableProject();
    } catch (const AppError &error) {
        c.err << "note: " << error.message() << "\n";
    }
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("config"), QStringLiteral("config"),
                 QStringLiteral("Writes the whole project as generated-config.yaml into the workspace\n"
                                "folder, for the command-line generator (generation from a chosen .app\n"
                                "build), and prints the file's path. A note on standard error says what\n"
                                "such a run would still need."),
                 runConfig, false});
