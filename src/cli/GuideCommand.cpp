// vantrel guide: where the customer guide of this build is.

#include "Command.h"

namespace {

int runGuide(CommandContext &c)
{
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("guide takes no arguments."));
    if (const std::optional<QString> path = c.model.locateCustomerGuide())
        c.out << *path << "\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("guide"), QStringLiteral("guide"),
                 QStringLiteral("Prints the path of the customer guide (CUSTOMER_READY.md): installing,\n"
                                "recording a flow, generating and reviewing screenshots."),
                 runGuide, false, true});
