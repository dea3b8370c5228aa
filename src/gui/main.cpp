// vantrel-app: the desktop front of Vantrel. It drives the same model as the
// `vantrel` command line, in a window with the library, the Setup, Record,
// Generate and Review panels, and the floating recorder panel.

#include "Dialogs.h"
#include "MainWindow.h"
#include "app/Interrupts.h"
#include "model/AppModel.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

int main(int argc, char **argv)
{
    Interrupts::install(); // before any thread starts
    QApplication app(argc, argv);
    Interrupts interrupts;
    QApplication::setApplicationName(QStringLiteral("Vantrel"));
    QApplication::setApplicationVersion(QStringLiteral(VANTREL_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Localized App Store screenshots of an iOS app."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption rootOption(QStringLiteral("root"),
                                        QStringLiteral("Keep projects and output under DIR (also: VANTREL_HOME)."),
                                        QStringLiteral("DIR"));
    parser.addOption(rootOption);
    parser.process(app);

    std::optional<QString> root;
    if (qEnvironmentVariableIsSet("VANTREL_HOME"))
        root = qEnvironmentVariable("VANTREL_HOME");
    if (parser.isSet(rootOption))
        root = parser.value(rootOption);

    AppModel model(root);
    WidgetDialogs dialogs;
    MainWindow window(model, dialogs);
    window.show();
    // The window is up before the simulator tools are asked anything; the
    // start-up refresh fills it in while it stays live.
    QTimer::singleShot(0, &window, [&window, &model] { window.busy().run([&model] { model.bootstrap(); }); });
    // Ctrl-C in the terminal or a SIGTERM ends the app as closing its window
    // does: a run is cancelled and leaves no build behind.
    const Interrupts::Handler onInterrupt([&window] { window.close(); });
    const int status = app.exec();
    interrupts.commandFinished();
    return Interrupts::received() ? Interrupts::exitStatus : status;
}
