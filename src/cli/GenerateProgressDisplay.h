#pragma once
// What `vantrel generate` shows while a run goes on. On a terminal: the run
// log as it grows, and below it a live block with one line per device and
// language (completed of total, state) and an overall bar, redrawn in place.
// Elsewhere (a pipe, a log file): plain lines, one per log message and one
// per change of a pair's progress, never redrawn.

#include "Command.h"

#include <QHash>

class GenerateProgressDisplay
{
public:
    GenerateProgressDisplay(CommandContext &context, bool live);

    // Shows what changed since the last call.
    void update();
    // Draws the final state once more and leaves it on screen.
    void finish();

    static QString bar(qint64 completed, qint64 total, int width);

private:
    QString cellLine(const RunProgressCell &cell, int labelWidth) const;
    QStringList liveBlock() const;
    void redrawLive();
    void printPlainChanges();

    CommandContext &c;
    bool m_live = false;
    int m_drawnLines = 0;
    QHash<QString, QString> m_printed; // key -> last plain progress text
};
