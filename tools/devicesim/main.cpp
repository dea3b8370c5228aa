// devicesim: the device stand-in. One program that answers as xcrun,
// xcodebuild and open when it is called by those names, and as devicesim
// (set-up and faults) otherwise.

#include "Console.h"
#include "DevicesimCommand.h"
#include "OpenCommand.h"
#include "Pause.h"
#include "ToolFailure.h"
#include "WindowCommand.h"
#include "XcodebuildCommand.h"
#include "XcrunCommand.h"

#include <QFileInfo>
#include <QGuiApplication>

namespace {

// Qt's own notes (such as a missing XDG_RUNTIME_DIR) would land on standard
// error, where the product reads a tool's complaints; only fatal ones pass.
void quietMessages(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        Console::err(message + QLatin1Char('\n'));
}

int dispatch(const QString &personality, const QStringList &arguments)
{
    if (personality == QLatin1String("xcrun"))
        return XcrunCommand::run(arguments);
    if (personality == QLatin1String("xcodebuild"))
        return XcodebuildCommand::run(arguments);
    if (personality == QLatin1String("open"))
        return OpenCommand::run(arguments);
    return DevicesimCommand::run(arguments);
}

} // namespace

int main(int argc, char **argv)
{
    const QString personality = QFileInfo(QString::fromLocal8Bit(argv[0])).fileName();
    // Drawing text needs a GUI application, but never a display; only the
    // Simulator window shows itself on one.
    if (WindowCommand::isRequested(personality, argc, argv))
        WindowCommand::prepareApplication();
    else if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quietMessages);
    Pause::installTerminationHandler();
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments().mid(1);
    int status = 0;
    try {
        status = dispatch(personality, arguments);
    } catch (const ToolFailure &failure) {
        Console::out(failure.standardOutput);
        Console::err(failure.standardError);
        status = failure.exitStatus;
    } catch (const Pause::Interrupted &) {
        Pause::honourTermination();
    }
    if (Pause::terminationRequested())
        Pause::honourTermination();
    return status;
}
