#include "GenerateProgressDisplay.h"

#include <algorithm>

GenerateProgressDisplay::GenerateProgressDisplay(CommandContext &context, bool live) : c(context), m_live(live) {}

QString GenerateProgressDisplay::bar(qint64 completed, qint64 total, int width)
{
    const qint64 filled = total > 0 ? std::clamp<qint64>(completed * width / total, 0, width) : 0;
    return QLatin1Char('[') + QString(filled, QLatin1Char('#')) + QString(width - filled, QLatin1Char('.'))
           + QLatin1Char(']');
}

QString GenerateProgressDisplay::cellLine(const RunProgressCell &cell, int labelWidth) const
{
    const RunProgress progress = c.model.runProgress().value(cell.key());
    return QStringLiteral("  %1  %2  %3")
        .arg(cell.label(), -labelWidth)
        .arg(RunProgressText::count(progress.completed, progress.total), 7)
        .arg(runProgressStateName(progress.state));
}

QStringList GenerateProgressDisplay::liveBlock() const
{
    const QList<RunProgressCell> cells = c.model.runProgressCells();
    int labelWidth = 0;
    for (const RunProgressCell &cell : cells)
        labelWidth = std::max(labelWidth, int(cell.label().size()));
    QStringList lines;
    for (const RunProgressCell &cell : cells)
        lines.append(cellLine(cell, labelWidth));
    const qint64 completed = c.model.completedRunProgressCount();
    const qint64 total = c.model.runTotalCount();
    lines.append(QStringLiteral("  %1 %2 screenshots").arg(bar(completed, total, 30), RunProgressText::count(completed, total)));
    return lines;
}

void GenerateProgressDisplay::redrawLive()
{
    // Up over the block drawn last time, clear to the end of the screen,
    // print the new log lines, then the block again below them.
    if (m_drawnLines > 0)
        c.out << QStringLiteral("\x1b[%1A\r\x1b[J").arg(m_drawnLines);
    c.flushLog();
    const QStringList block = c.model.runProgress().isEmpty() ? QStringList() : liveBlock();
    for (const QString &line : block)
        c.out << line << "\n";
    m_drawnLines = int(block.size());
    c.out.flush();
}

void GenerateProgressDisplay::printPlainChanges()
{
    // The model announces its changes once per turn of the event loop; a
    // run changes a pair's progress before it logs what it does next
    // ("Running ..."), so the progress lines come first.
    for (const RunProgressCell &cell : c.model.runProgressCells()) {
        const auto found = c.model.runProgress().constFind(cell.key());
        if (found == c.model.runProgress().cend())
            continue;
        const QString text = RunProgressText::summary(*found);
        if (m_printed.value(cell.key()) == text)
            continue;
        m_printed.insert(cell.key(), text);
        c.out << "Progress: " << cell.label() << " " << text << " ("
              << RunProgressText::count(c.model.completedRunProgressCount(), c.model.runTotalCount()) << ")\n";
    }
    c.flushLog();
    c.out.flush();
}

void GenerateProgressDisplay::update()
{
    if (m_live)
        redrawLive();
    else
        printPlainChanges();
}

void GenerateProgressDisplay::finish()
{
    update();
    m_drawnLines = 0; // the last block stays where it is
}
