#include "GeneratorProgressDisplay.h"

#include "GenerateProgressDisplay.h"

namespace {

constexpr qsizetype maximumLabelLength = 36;

} // namespace

GeneratorProgressDisplay::GeneratorProgressDisplay(QTextStream &out, bool live, qint64 total)
    : m_out(out), m_live(live), m_total(total)
{
}

QString GeneratorProgressDisplay::screenshotLine(qint64 number, qint64 total, const QString &language,
                                                 const QString &deviceName, const QString &fileName)
{
    return QStringLiteral("Screenshot %1 of %2: %3 / %4 / %5").arg(number).arg(total).arg(language, deviceName, fileName);
}

void GeneratorProgressDisplay::clearBar()
{
    if (m_barDrawn)
        m_out << "\r\x1b[K";
    m_barDrawn = false;
}

void GeneratorProgressDisplay::drawBar()
{
    m_out << "  " << GenerateProgressDisplay::bar(m_completed, m_total, 30) << ' ' << m_completed << '/' << m_total
          << " screenshots" << (m_last.isEmpty() ? QString() : QStringLiteral("  ") + m_last);
    m_barDrawn = true;
    m_out.flush();
}

void GeneratorProgressDisplay::log(const QString &message)
{
    if (!m_live) {
        m_out << message << "\n";
        m_out.flush();
        return;
    }
    clearBar();
    m_out << message << "\n";
    drawBar();
}

void GeneratorProgressDisplay::screenshot(qint64 number, const QString &language, const QString &deviceName,
                                          const QString &fileName)
{
    m_completed = number;
    if (!m_live) {
        m_out << screenshotLine(number, m_total, language, deviceName, fileName) << "\n";
        m_out.flush();
        return;
    }
    // Short enough that the bar stays on one line of a usual terminal.
    m_last = language + QStringLiteral(" / ") + deviceName + QStringLiteral(" / ") + fileName;
    if (m_last.size() > maximumLabelLength)
        m_last = m_last.left(maximumLabelLength - 1) + QChar(0x2026);
    clearBar();
    drawBar();
}

void GeneratorProgressDisplay::finish()
{
    if (!m_barDrawn)
        return;
    m_out << "\n";
    m_out.flush();
    m_barDrawn = false;
}
