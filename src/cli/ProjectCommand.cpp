// vantrel project show: the stored JSON document of the current project.

#include "Command.h"

#include "model/AtomicFile.h"

namespace {

int runProject(CommandContext &c)
{
    if (c.arguments != QStringList{QStringLiteral("show")})
        return c.usageError(QStringLiteral("Usage: vantrel project show"));
    const QString path = c.model.projectFileURL(c.model.project.projectID.value_or(QString()));
    const std::optional<QByteArray> bytes = AtomicFile::readIfExists(path);
    if (!bytes) {
        c.model.setLastError(QStringLiteral("Could not read %1.").arg(path));
        return 1;
    }
    c.out << QString::fromUtf8(*bytes) << "\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("project"), QStringLiteral("project show"),
                 QStringLiteral("Prints the stored JSON document of the current project."), runProject, false});
