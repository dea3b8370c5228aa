// vantrel project show | project set FIELD VALUE: the stored JSON document of
// the current project, and the fields of the generator configuration that
// no other command sets.

#include "Command.h"

#include "model/AtomicFile.h"
#include "replay/RealNumberText.h"

namespace {

const char *setUsage =
    "Usage: vantrel project set launch-wait SECONDS | reset-app-data yes|no | open-simulator yes|no\n"
    "       | launch-arguments [ARGUMENT...] | state-argument NAME | sample-argument [NAME]";

int showProject(CommandContext &c)
{
    const QString path = c.model.projectFileURL(c.model.project().projectID.value_or(QString()));
    const std::optional<QByteArray> bytes = AtomicFile::readIfExists(path);
    if (!bytes) {
        c.model.setLastError(QStringLiteral("Could not read %1.").arg(path));
        return 1;
    }
    c.out << QString::fromUtf8(*bytes) << "\n";
    return 0;
}

std::optional<bool> yesOrNo(const QString &text)
{
    const QString word = text.toLower();
    if (word == QLatin1String("yes") || word == QLatin1String("true") || word == QLatin1String("on"))
        return true;
    if (word == QLatin1String("no") || word == QLatin1String("false") || word == QLatin1String("off"))
        return false;
    return std::nullopt;
}

QString onOff(bool value) { return value ? QStringLiteral("yes") : QStringLiteral("no"); }

int setField(CommandContext &c, const QString &field, const QStringList &values)
{
    AppModel &m = c.model;
    const ScreenshotProject &p = m.project();
    const QString single = values.size() == 1 ? values.first() : QString();
    if (field == QLatin1String("launch-wait") && values.size() == 1) {
        bool ok = false;
        const double seconds = single.toDouble(&ok);
        if (!ok)
            return c.usageError(QStringLiteral("SECONDS is a number, such as 2 or 1.5."));
        m.setLaunchWaitSeconds(seconds);
        c.out << "Launch wait: " << RealNumberText::shortest(p.launchWaitSeconds) << " seconds\n";
    } else if ((field == QLatin1String("reset-app-data") || field == QLatin1String("open-simulator"))
               && values.size() == 1) {
        const std::optional<bool> value = yesOrNo(single);
        if (!value)
            return c.usageError(QStringLiteral("Give yes or no."));
        if (field == QLatin1String("reset-app-data")) {
            m.setResetAppData(*value);
            c.out << "Reset app data before each language: " << onOff(p.resetAppData) << "\n";
        } else {
            m.setOpenSimulator(*value);
            c.out << "Open Simulator before a run: " << onOff(p.openSimulator) << "\n";
        }
    } else if (field == QLatin1String("launch-arguments")) {
        m.setGlobalLaunchArguments(values);
        c.out << "Launch arguments: "
              << (p.globalLaunchArguments.isEmpty() ? QStringLiteral("(none)") : p.globalLaunchArguments.join(QLatin1Char(' ')))
              << "\n";
    } else if (field == QLatin1String("state-argument") && values.size() == 1) {
        m.setStateArgumentName(single);
        c.out << "State argument: -" << p.stateArgumentName << "\n";
    } else if (field == QLatin1String("sample-argument") && values.size() <= 1) {
        m.setSampleNameArgumentName(single);
        c.out << "Sample argument: "
              << (p.sampleNameArgumentName.isEmpty() ? QStringLiteral("(none)") : QLatin1Char('-') + p.sampleNameArgumentName)
              << "\n";
    } else {
        return c.usageError(QString::fromLatin1(setUsage));
    }
    return m.lastError() ? 1 : 0;
}

int runProject(CommandContext &c)
{
    const QString action = c.arguments.value(0);
    if (action == QLatin1String("show") && c.arguments.size() == 1)
        return showProject(c);
    if (action == QLatin1String("set") && c.arguments.size() >= 2)
        return setField(c, c.arguments.at(1), c.arguments.mid(2));
    return c.usageError(QStringLiteral("Usage: vantrel project show\n") + QString::fromLatin1(setUsage));
}

} // namespace

VANTREL_COMMAND({QStringLiteral("project"), QStringLiteral("project show | project set FIELD VALUE..."),
                 QStringLiteral("  show    prints the stored JSON document of the current project\n"
                                "  set     sets what generation from an .app build uses:\n"
                                "    launch-wait SECONDS          wait after each launch (a screen's own wait wins)\n"
                                "    reset-app-data yes|no        remove the app before each language\n"
                                "    open-simulator yes|no        show the Simulator before a run\n"
                                "    launch-arguments [ARG...]    arguments for every launch (none clears them)\n"
                                "    state-argument NAME          the argument that carries a screen's state\n"
                                "                                 (the app gets -NAME STATE; usually vantrel.screen)\n"
                                "    sample-argument [NAME]       the argument that carries a screen's sample name\n"
                                "                                 (none: no sample arguments)\n"
                                "Screens are set with 'vantrel screens'."),
                 runProject, false});
