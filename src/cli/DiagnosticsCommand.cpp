// vantrel diagnostics: writes the diagnostics file to send with a problem report.

#include "Command.h"

namespace {

int runDiagnostics(CommandContext &c)
{
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("diagnostics takes no arguments."));
    // The file is written, not revealed: a terminal has no file viewer to show it in.
    if (const std::optional<QString> path = c.model.writeDiagnostics())
        c.out << *path << "\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("diagnostics"), QStringLiteral("diagnostics"),
                 QStringLiteral("Writes diagnostics.txt (project set-up and the run log) into the workspace\n"
                                "folder and prints its path."),
                 runDiagnostics, false, true});
