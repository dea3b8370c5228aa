// vantrel screens: the screens that generation makes, with what generation
// from an .app build passes for each (state, sample name, launch wait), and
// adding screens that the app reaches by launch state alone.

#include "Command.h"

#include "replay/RealNumberText.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

const char *usage =
    "Usage: vantrel screens [--json]\n"
    "       vantrel screens add NAME [--state STATE] [--sample NAME] [--launch-wait SECONDS]\n"
    "       vantrel screens set N [--name NAME] [--state STATE] [--sample NAME] [--launch-wait SECONDS]";

QString seconds(double value) { return RealNumberText::shortest(value); }

void printScreens(CommandContext &c, bool json)
{
    const ScreenshotProject &p = c.model.project();
    if (json) {
        QJsonArray array;
        for (qsizetype i = 0; i < p.screens.size(); ++i) {
            const ScreenDraft &s = p.screens.at(i);
            array.append(QJsonObject{{QStringLiteral("number"), i + 1},
                                     {QStringLiteral("name"), s.name},
                                     {QStringLiteral("state"), s.state},
                                     {QStringLiteral("sampleName"), s.sampleName},
                                     {QStringLiteral("launchWaitSeconds"), s.launchWaitSeconds},
                                     {QStringLiteral("operations"), s.operations.size()}});
        }
        c.printJson(array);
        return;
    }
    if (p.screens.isEmpty())
        c.out << "No screens. Record checkpoints with 'vantrel record' or add screens with 'vantrel screens add'.\n";
    for (qsizetype i = 0; i < p.screens.size(); ++i) {
        const ScreenDraft &s = p.screens.at(i);
        QStringList details;
        if (!s.state.isEmpty())
            details << QStringLiteral("state %1").arg(s.state);
        if (!s.sampleName.isEmpty())
            details << QStringLiteral("sample %1").arg(s.sampleName);
        details << (s.launchWaitSeconds > 0 ? QStringLiteral("wait %1 s").arg(seconds(s.launchWaitSeconds))
                                            : QStringLiteral("wait %1 s (project)").arg(seconds(p.launchWaitSeconds)));
        details << QStringLiteral("%1 recorded operations").arg(s.operations.size());
        c.out << QStringLiteral("%1").arg(i + 1, 2) << "  " << s.name << "  (" << details.join(QStringLiteral(", "))
              << ")\n";
    }
    c.out << "State argument: -" << p.stateArgumentName << "   Sample argument: "
          << (p.sampleNameArgumentName.isEmpty() ? QStringLiteral("(none)") : QLatin1Char('-') + p.sampleNameArgumentName)
          << "\n";
}

struct ScreenOptions
{
    std::optional<QString> name;
    std::optional<QString> state;
    std::optional<QString> sample;
    std::optional<double> launchWait;
};

// Takes the options out of the arguments; nothing when one is malformed.
std::optional<ScreenOptions> takeOptions(CommandContext &c)
{
    ScreenOptions options;
    options.name = c.takeOption(QStringLiteral("--name"));
    options.state = c.takeOption(QStringLiteral("--state"));
    options.sample = c.takeOption(QStringLiteral("--sample"));
    if (const std::optional<QString> wait = c.takeOption(QStringLiteral("--launch-wait"))) {
        bool ok = false;
        options.launchWait = wait->toDouble(&ok);
        if (!ok)
            return std::nullopt;
    }
    return options;
}

// Applies the options to screen `number`, stopping at the first refusal.
void apply(AppModel &m, qint64 number, const ScreenOptions &options)
{
    if (options.name && !m.lastError())
        m.renameScreen(number, *options.name);
    if (options.state && !m.lastError())
        m.setScreenState(number, *options.state);
    if (options.sample && !m.lastError())
        m.setScreenSampleName(number, *options.sample);
    if (options.launchWait && !m.lastError())
        m.setScreenLaunchWaitSeconds(number, *options.launchWait);
}

int runScreens(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    const QString action = c.arguments.value(0);
    if (action.isEmpty()) {
        printScreens(c, json);
        return 0;
    }
    const std::optional<ScreenOptions> options = takeOptions(c);
    if (!options)
        return c.usageError(QStringLiteral("--launch-wait takes a number of seconds, such as 2 or 1.5."));
    AppModel &m = c.model;
    if (action == QLatin1String("add") && c.arguments.size() == 2 && !options->name) {
        m.addScreen(c.arguments.at(1));
        if (!m.lastError())
            apply(m, m.project().screens.size(), *options);
    } else if (action == QLatin1String("set") && c.arguments.size() == 2) {
        bool ok = false;
        const qint64 number = c.arguments.at(1).toLongLong(&ok);
        if (!ok)
            return c.usageError(QStringLiteral("N is a screen number, as 'vantrel screens' lists them."));
        apply(m, number, *options);
    } else {
        return c.usageError(QString::fromLatin1(usage));
    }
    if (m.lastError())
        return 1;
    printScreens(c, json);
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("screens"),
                 QStringLiteral("screens [--json] | screens add NAME [OPTIONS] | screens set N [OPTIONS]"),
                 QStringLiteral("Lists the screens that generation makes, one per checkpoint, with what\n"
                                "generation from an .app build passes to the app for each.\n"
                                "  add NAME    adds a screen that the app reaches by its launch state alone\n"
                                "              (no recording needed), such as --state settings\n"
                                "  set N       changes screen N\n"
                                "Options:\n"
                                "  --name NAME            the screen's name (and its checkpoint image's)\n"
                                "  --state STATE          passed as -<state argument> STATE (\"\" clears it)\n"
                                "  --sample NAME          passed as -<sample argument> NAME when the project\n"
                                "                         names a sample argument (\"\" clears it)\n"
                                "  --launch-wait SECONDS  wait after launching for this screen; 0 uses the\n"
                                "                         project's launch wait\n"
                                "Checkpoints (and their screens) are moved and deleted with 'vantrel checkpoints'."),
                 runScreens, false});
