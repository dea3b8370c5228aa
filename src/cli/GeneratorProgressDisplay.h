#pragma once
// What `vantrel run` shows while the generator works. On a terminal: what it
// does, line by line, and below it one progress bar redrawn in place after
// every screenshot. Elsewhere (a pipe, a log file, the desktop application's
// run log): the same lines and one line per screenshot,
// "Screenshot 3 of 6: de-DE / iPhone 15 Pro / 01-Trips.png", which the
// application reads back for its own progress.

#include <QString>
#include <QTextStream>

class GeneratorProgressDisplay
{
public:
    GeneratorProgressDisplay(QTextStream &out, bool live, qint64 total);

    void log(const QString &message);
    void screenshot(qint64 number, const QString &language, const QString &deviceName, const QString &fileName);
    // Leaves the last bar on screen.
    void finish();

    static QString screenshotLine(qint64 number, qint64 total, const QString &language, const QString &deviceName,
                                  const QString &fileName);

private:
    void clearBar();
    void drawBar();

    QTextStream &m_out;
    bool m_live = false;
    qint64 m_total = 0;
    qint64 m_completed = 0;
    QString m_last; // the last screenshot, shown beside the bar
    bool m_barDrawn = false;
};
