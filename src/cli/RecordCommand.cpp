// vantrel record: a scriptable recorder. It starts a recording and reads
// one command per line from standard input (a person at a terminal or a
// script), driving the same model operations as the desktop recorder. Taps
// and swipes are performed on the device at once, like typed text. The
// recorded waits of a script are its own: its clock moves only by its `wait`
// commands, never by the time a command takes to carry out. With --clicks it
// also records the clicks and drags made in the Simulator window, as the
// desktop recorder does, while the commands go on; waits then come from the
// real time between actions, as they do in the desktop recorder.

#include "Command.h"
#include "app/Interrupts.h"
#include "InputLines.h"

#include "model/Await.h"
#include "model/OperationDraft.h"
#include "recorder/OperationDescription.h"
#include "recorder/RecordedGesture.h"

#include <QEventLoop>
#include <memory>
#include <unistd.h>

namespace {

// A swipe typed without a duration presses this long.
constexpr double defaultSwipeSeconds = 0.5;

const char *sessionHelp =
    "  tap X Y                        tap at device point X,Y\n"
    "  swipe X1 Y1 X2 Y2 [SECONDS]    swipe from X1,Y1 to X2,Y2\n"
    "  type TEXT                      type TEXT into the app\n"
    "  wait SECONDS                   let SECONDS pass (recorded before the next action)\n"
    "  checkpoint [NAME]              save a checkpoint; without NAME it is named from the screen text\n"
    "  status                         show what has been recorded\n"
    "  stop                           stop recording (so does the end of input)\n";

struct Session
{
    CommandContext &c;
    std::shared_ptr<ReferenceSeconds> clock; // the script's time; none with --clicks
    bool refused = false;

    // Prints what the model said about the last command; a refusal does not
    // end the session.
    void report()
    {
        c.flushLog();
        if (c.model.lastError()) {
            c.err << *c.model.lastError() << "\n";
            c.err.flush();
            c.model.clearLastError();
            refused = true;
        }
    }

    void refuse(const QString &message)
    {
        c.err << message << "\n";
        c.err.flush();
        refused = true;
    }

    void printStatus()
    {
        AppModel &m = c.model;
        c.out << "Status: " << m.simulatorEventRecordingStatus() << "\n"
              << "Checkpoints: " << m.project().screens.size() << "\n"
              << "Recorded actions: " << m.recordedInputActionCount() << "\n";
        const QStringList pending = m.pendingOperationDescriptions();
        c.out << "Pending: " << (pending.isEmpty() ? QStringLiteral("(none)") : pending.join(QStringLiteral("; ")))
              << "\n"
              << "Next checkpoint: " << m.manualCaptureFilenamePreview(QString()) << "\n";
        c.out.flush();
    }

    // The actions recorded so far in this recording (it starts empty), in order.
    QList<OperationDraft> recordedActions() const
    {
        QList<OperationDraft> actions;
        const auto collect = [&actions](const QList<OperationDraft> &operations) {
            for (const OperationDraft &operation : operations)
                if (!operation.isWait())
                    actions.append(operation);
        };
        for (const ScreenDraft &screen : c.model.project().screens)
            collect(screen.operations);
        collect(c.model.pendingOperations());
        return actions;
    }

    // Prints each action recorded since the last call as the recorder's
    // status line words it, whether typed here or clicked in the window.
    void printNewlyRecorded()
    {
        const QList<OperationDraft> actions = recordedActions();
        for (qsizetype i = std::min(printedActions, actions.size()); i < actions.size(); ++i)
            c.out << "Recorded " << OperationDescription::text(actions[i]) << "\n";
        printedActions = actions.size();
        c.out.flush();
    }

    qsizetype printedActions = 0;

    // Whole numbers (device points) from the words; nothing if one is not.
    static std::optional<QList<qint64>> points(const QStringList &words)
    {
        QList<qint64> values;
        for (const QString &word : words) {
            bool ok = false;
            const qint64 value = word.toLongLong(&ok);
            if (!ok)
                return std::nullopt;
            values.append(value);
        }
        return values;
    }

    void tap(const QStringList &words)
    {
        const auto p = points(words);
        if (!p || p->size() != 2)
            return refuse(QStringLiteral("Usage: tap X Y (whole device points)"));
        gesture(OperationDraft::tap(p->at(0), p->at(1)));
    }

    void swipe(const QStringList &words)
    {
        const auto p = points(words.mid(0, 4));
        bool ok = words.size() == 4;
        double seconds = defaultSwipeSeconds;
        if (words.size() == 5)
            seconds = words.at(4).toDouble(&ok);
        if (!p || p->size() != 4 || !ok)
            return refuse(QStringLiteral("Usage: swipe X1 Y1 X2 Y2 [SECONDS] (whole device points)"));
        gesture(OperationDraft::swipe(p->at(0), p->at(1), p->at(2), p->at(3), RecordedGesture::swipeDuration(seconds)));
    }

    void gesture(const OperationDraft &operation)
    {
        c.model.addRecordedGesture(operation);
        report();
    }

    void type(const QString &text)
    {
        if (text.trimmed().isEmpty())
            return; // typing only blanks types nothing
        c.model.addRecordedType(text);
        report();
    }

    void wait(const QStringList &words)
    {
        bool ok = words.size() == 1;
        const double seconds = ok ? words.at(0).toDouble(&ok) : 0;
        if (!ok || seconds < 0)
            return refuse(QStringLiteral("Usage: wait SECONDS"));
        awaitDelay(seconds); // the app on the device gets that time, too
        if (clock)
            *clock += seconds;
    }

    void checkpoint(const QString &name)
    {
        c.model.captureManualScreenshot(name);
        if (!c.model.lastError() && c.model.lastManualCaptureURL())
            c.out << "Saved checkpoint " << *c.model.lastManualCaptureURL() << "\n";
        c.out.flush();
        report();
    }

    // Handles one line; false once the session is over.
    bool handle(const QString &line)
    {
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#')))
            return true;
        const QString verb = trimmed.section(QLatin1Char(' '), 0, 0, QString::SectionSkipEmpty);
        const QString rest = trimmed.mid(verb.size()).trimmed();
        const QStringList words = rest.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (verb == QLatin1String("stop"))
            return false;
        if (verb == QLatin1String("tap"))
            tap(words);
        else if (verb == QLatin1String("swipe"))
            swipe(words);
        else if (verb == QLatin1String("type"))
            type(rest);
        else if (verb == QLatin1String("wait"))
            wait(words);
        else if (verb == QLatin1String("checkpoint"))
            checkpoint(rest);
        else if (verb == QLatin1String("status"))
            printStatus();
        else
            refuse(QStringLiteral("Unknown recorder command '%1'. Commands:\n%2").arg(verb, QString::fromLatin1(sessionHelp)));
        return true;
    }
};

int runSession(CommandContext &c, bool clicks)
{
    AppModel &model = c.model;
    if (clicks) {
        // Said before anything starts, so the recorded flow stays as it is.
        if (const std::optional<QString> problem = model.platform().mouseMonitorProblem()) {
            c.err << *problem << "\n";
            return 1;
        }
    }
    // Without --clicks, taps and swipes are typed here, not clicked, and
    // time is the script's.
    model.setObservesDesktopClicks(clicks);
    std::shared_ptr<ReferenceSeconds> clock;
    if (!clicks) {
        clock = std::make_shared<ReferenceSeconds>(ReferenceDate::now());
        model.setRecordingClock([clock] { return *clock; });
    }
    model.startFlowRecording();
    c.flushLog();
    if (!model.isRecordingFlow())
        return 1; // main() prints why
    if (model.lastError()) {
        // Recording runs; only something around it (such as the preview) failed.
        c.err << "note: " << *model.lastError() << "\n";
        model.clearLastError();
    }
    if (clicks)
        c.out << model.simulatorEventRecordingStatus() << "\n";
    c.out << "Recording. One command per line; 'stop' or the end of input ends the recording.\n";
    c.out.flush();

    Session session{c, clock};
    QEventLoop loop;
    const auto end = [&loop] { loop.quit(); };
    InputLines input(STDIN_FILENO,
                     [&](const QString &line) {
                         const bool goesOn = session.handle(line);
                         session.printNewlyRecorded();
                         if (!goesOn || !model.isRecordingFlow())
                             end();
                         return goesOn && model.isRecordingFlow();
                     },
                     end);
    // Clicks are recorded between commands; a recording that the desktop
    // ended (its display went away) ends the session too.
    QObject::connect(&model, &AppModel::changed, &loop, [&] {
        session.printNewlyRecorded();
        if (!model.isRecordingFlow())
            end();
    }, Qt::QueuedConnection);
    const Interrupts::Handler interrupts(end); // Ctrl-C ends the recording as 'stop' does
    loop.exec();

    session.printNewlyRecorded();
    const bool endedByDesktop = !model.isRecordingFlow();
    if (!endedByDesktop)
        model.stopFlowRecording();
    c.out << "Stopped recording: " << model.project().screens.size() << " checkpoints, "
          << model.recordedInputActionCount() << " recorded actions.\n";
    c.out.flush();
    if (endedByDesktop)
        return 1; // main() prints why
    session.report();
    return session.refused ? 1 : 0;
}

int runRecord(CommandContext &c)
{
    if (c.arguments.isEmpty())
        return runSession(c, false);
    if (c.arguments == QStringList{QStringLiteral("--clicks")})
        return runSession(c, true);
    if (c.arguments == QStringList{QStringLiteral("reset")}) {
        c.model.resetRecordedFlow();
        if (!c.model.lastError())
            c.out << "Cleared the recorded flow and its checkpoint images.\n";
        return 0;
    }
    return c.usageError(QStringLiteral("Usage: vantrel record [--clicks] | record reset"));
}

} // namespace

// No start-up refresh: starting a recording finds the device, detects the
// app when none is chosen and takes the preview itself, and a reset needs
// none of them; the refresh would run those simctl queries a second time.
VANTREL_COMMAND({QStringLiteral("record"), QStringLiteral("record [--clicks] | record reset"),
                 QStringLiteral("Records a flow on the attached Simulator. Starts a recording, then reads one\n"
                                "command per line from standard input until 'stop', the end of input or Ctrl-C:\n")
                     + QString::fromLatin1(sessionHelp)
                     + QStringLiteral("X and Y are device points. A refused command prints why and the session goes on;\n"
                                      "the exit status is 1 when any command was refused.\n"
                                      "  --clicks   also record clicks (taps) and drags (swipes) made in the Simulator\n"
                                      "             window, printing each as it is recorded; needs a desktop whose\n"
                                      "             clicks can be observed (on Linux an X11 display: set DISPLAY)\n"
                                      "  reset      clears all checkpoints, their images and what is pending"),
                 runRecord, false});
