#include "GenerateProgressDisplay.h"

#include <algorithm>

namespace {

QString fraction(qint64 completed, qint64 total) { return QStringLiteral("%1/%2").arg(completed).arg(total); }

} // namespace

GenerateProgressDisplay::GenerateProgressDisplay(CommandContext &context, bool live) : c(context), m_live(live) {}

QString GenerateProgressDisplay::bar(qint64 completed, qint64 total, int width)
{
    const qint64 filled = total > 0 ? std::clamp<qint64>(completed * width / total, 0, width) : 0;
    return QLatin1Char('[') + QString(filled, QLatin1Char('#')) + QString(width - filled, QLatin1Char('.'))
           + QLatin1Char(']');
}

// In the project's order: devices, and within each its languages.
QList<GenerateProgressDisplay::Pair> GenerateProgressDisplay::pairs() const
{
    QList<Pair> result;
    const ScreenshotProject &p = c.model.project;
    for (const QString &device : p.devices) {
        const QString name = c.model.displayNameForDeviceID(device);
        for (const QString &language : p.languages)
            result.append({name + QStringLiteral(" / ") + language, RunProgress::key(language, device)});
    }
    return result;
}

QString GenerateProgressDisplay::pairLine(const Pair &pair, int labelWidth) const
{
    const RunProgress progress = c.model.runProgress.value(pair.key);
    return QStringLiteral("  %1  %2  %3")
        .arg(pair.label, -labelWidth)
        .arg(fraction(progress.completed, progress.total), 7)
        .arg(runProgressStateName(progress.state));
}

QStringList GenerateProgressDisplay::liveBlock() const
{
    const QList<Pair> all = pairs();
    int labelWidth = 0;
    for (const Pair &pair : all)
        labelWidth = std::max(labelWidth, int(pair.label.size()));
    QStringList lines;
    for (const Pair &pair : all)
        lines.append(pairLine(pair, labelWidth));
    const qint64 completed = c.model.completedRunProgressCount();
    const qint64 total = c.model.runTotalCount();
    lines.append(QStringLiteral("  %1 %2 screenshots").arg(bar(completed, total, 30), fraction(completed, total)));
    return lines;
}

void GenerateProgressDisplay::redrawLive()
{
    // Up over the block drawn last time, clear to the end of the screen,
    // print the new log lines, then the block again below them.
    if (m_drawnLines > 0)
        c.out << QStringLiteral("\x1b[%1A\r\x1b[J").arg(m_drawnLines);
    c.flushLog();
    const QStringList block = c.model.runProgress.isEmpty() ? QStringList() : liveBlock();
    for (const QString &line : block)
        c.out << line << "\n";
    m_drawnLines = int(block.size());
    c.out.flush();
}

void GenerateProgressDisplay::printPlainChanges()
{
    c.flushLog();
    for (const Pair &pair : pairs()) {
        const auto found = c.model.runProgress.constFind(pair.key);
        if (found == c.model.runProgress.cend())
            continue;
        const QString text = fraction(found->completed, found->total) + QLatin1Char(' ')
                             + runProgressStateName(found->state);
        if (m_printed.value(pair.key) == text)
            continue;
        m_printed.insert(pair.key, text);
        c.out << "Progress: " << pair.label << " " << text << " ("
              << fraction(c.model.completedRunProgressCount(), c.model.runTotalCount()) << ")\n";
    }
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
