// vantrel record: a scriptable recorder. It starts a recording and reads
// one command per line from standard input (a person at a terminal or a
// script), driving the same model operations as the desktop recorder. Taps
// and swipes are performed on the device at once, like typed text. The
// recorded waits are the script's own: its clock moves only by its `wait`
// commands, never by the time a command takes to carry out.

#include "Command.h"

#include "model/Await.h"
#include "model/OperationDraft.h"
#include "recorder/OperationDescription.h"
#include "recorder/RecordedGesture.h"

#include <QTextStream>
#include <cstdio>
#include <memory>

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
    std::shared_ptr<ReferenceSeconds> clock; // the script's time
    bool refused = false;

    // Prints what the model said about the last command; a refusal does not
    // end the session.
    void report()
    {
        c.flushLog();
        if (c.model.lastError) {
            c.err << *c.model.lastError << "\n";
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
        c.out << "Status: " << m.simulatorEventRecordingStatus << "\n"
              << "Checkpoints: " << m.project.screens.size() << "\n"
              << "Recorded actions: " << m.recordedInputActionCount() << "\n";
        QStringList pending;
        for (const OperationDraft &operation : m.pendingOperations)
            pending.append(operation.identity());
        c.out << "Pending: " << (pending.isEmpty() ? QStringLiteral("(none)") : pending.join(QStringLiteral(", ")))
              << "\n"
              << "Next checkpoint: " << m.manualCaptureFilenamePreview(QString()) << "\n";
        c.out.flush();
    }

    // "Recorded Tap 147, 790": the operation the model has just recorded.
    void printRecorded()
    {
        c.out << "Recorded " << OperationDescription::text(c.model.pendingOperations.last()) << "\n";
        c.out.flush();
    }

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
        if (!c.model.lastError)
            printRecorded();
        report();
    }

    void type(const QString &text)
    {
        if (text.trimmed().isEmpty())
            return; // typing only blanks types nothing
        c.model.addRecordedType(text);
        if (!c.model.lastError)
            printRecorded();
        report();
    }

    void wait(const QStringList &words)
    {
        bool ok = words.size() == 1;
        const double seconds = ok ? words.at(0).toDouble(&ok) : 0;
        if (!ok || seconds < 0)
            return refuse(QStringLiteral("Usage: wait SECONDS"));
        awaitDelay(seconds); // the app on the device gets that time, too
        *clock += seconds;
    }

    void checkpoint(const QString &name)
    {
        c.model.captureManualScreenshot(name);
        if (!c.model.lastError && c.model.lastManualCaptureURL)
            c.out << "Saved checkpoint " << *c.model.lastManualCaptureURL << "\n";
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

int runSession(CommandContext &c)
{
    // Taps and swipes are typed here, not clicked in the Simulator window.
    c.model.observesDesktopClicks = false;
    const auto clock = std::make_shared<ReferenceSeconds>(ReferenceDate::now());
    c.model.recordingClock = [clock] { return *clock; };
    c.model.startFlowRecording();
    c.flushLog();
    if (!c.model.isRecordingFlow)
        return 1; // main() prints why
    if (c.model.lastError) {
        // Recording runs; only something around it (such as the preview) failed.
        c.err << "note: " << *c.model.lastError << "\n";
        c.model.clearLastError();
    }
    c.out << "Recording. One command per line; 'stop' or the end of input ends the recording.\n";
    c.out.flush();
    Session session{c, clock};
    QTextStream in(stdin);
    QString line;
    while (in.readLineInto(&line) && session.handle(line)) {
    }
    c.model.stopFlowRecording();
    c.out << "Stopped recording: " << c.model.project.screens.size() << " checkpoints, "
          << c.model.recordedInputActionCount() << " recorded actions.\n";
    session.report();
    return session.refused ? 1 : 0;
}

int runRecord(CommandContext &c)
{
    if (c.arguments.isEmpty())
        return runSession(c);
    if (c.arguments == QStringList{QStringLiteral("reset")}) {
        c.model.resetRecordedFlow();
        if (!c.model.lastError)
            c.out << "Cleared the recorded flow and its checkpoint images.\n";
        return 0;
    }
    return c.usageError(QStringLiteral("Usage: vantrel record | record reset"));
}

} // namespace

// No start-up refresh: starting a recording finds the device, detects the
// app when none is chosen and takes the preview itself, and a reset needs
// none of them; the refresh would run those simctl queries a second time.
VANTREL_COMMAND({QStringLiteral("record"), QStringLiteral("record | record reset"),
                 QStringLiteral("Records a flow on the attached Simulator. Starts a recording, then reads one\n"
                                "command per line from standard input until 'stop' or the end of input:\n")
                     + QString::fromLatin1(sessionHelp)
                     + QStringLiteral("X and Y are device points. A refused command prints why and the session goes on;\n"
                                      "the exit status is 1 when any command was refused.\n"
                                      "  reset   clears all checkpoints, their images and what is pending"),
                 runRecord, false});
