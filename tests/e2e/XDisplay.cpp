#include "XDisplay.h"

#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QStandardPaths>

namespace E2E {

XDisplay::XDisplay()
{
    for (const char *tool : {"Xvfb", "xdotool"}) {
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) {
            m_problem = QStringLiteral("%1 is not installed (scripts/setup.sh installs it)").arg(QLatin1String(tool));
            return;
        }
    }
    // The server writes the display number it chose to its standard output
    // once it accepts connections.
    m_server.start(QStringLiteral("Xvfb"), {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                            QStringLiteral("0"), QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
                                            QStringLiteral("tcp"), QStringLiteral("-noreset")});
    QDeadlineTimer deadline(20000);
    QByteArray output;
    while (!output.contains('\n') && !deadline.hasExpired() && m_server.state() != QProcess::NotRunning) {
        m_server.waitForReadyRead(200);
        output += m_server.readAllStandardOutput();
    }
    bool ok = false;
    const int number = output.trimmed().toInt(&ok);
    if (!ok) {
        m_problem = QStringLiteral("Xvfb did not start: %1").arg(QString::fromLocal8Bit(m_server.readAllStandardError()).trimmed());
        shutDown();
        return;
    }
    m_name = QStringLiteral(":%1").arg(number);
}

XDisplay::~XDisplay()
{
    shutDown();
}

void XDisplay::shutDown()
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    m_server.terminate();
    if (!m_server.waitForFinished(10000)) {
        m_server.kill();
        m_server.waitForFinished(5000);
    }
}

Run XDisplay::xdotool(const QStringList &arguments) const
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), m_name);
    process.setProcessEnvironment(env);
    process.start(QStringLiteral("xdotool"), arguments);
    const bool finished = process.waitForFinished(20000);
    return {finished && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

QStringList XDisplay::waitForSearch(const QStringList &criteria, int timeoutMs) const
{
    QStringList windows;
    eventually([&] {
        const Run search = xdotool(QStringList{QStringLiteral("search"), QStringLiteral("--onlyvisible")} + criteria);
        windows = search.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        return !windows.isEmpty();
    }, timeoutMs);
    return windows;
}

QStringList XDisplay::waitForWindows(const QString &wmClass, int timeoutMs) const
{
    return waitForSearch({QStringLiteral("--class"), QStringLiteral("^%1$").arg(wmClass)}, timeoutMs);
}

QStringList XDisplay::waitForTitle(const QString &titlePattern, int timeoutMs) const
{
    return waitForSearch({QStringLiteral("--name"), titlePattern}, timeoutMs);
}

bool XDisplay::hasWindowTitled(const QString &titlePattern) const
{
    return !xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"), titlePattern})
                .out.trimmed()
                .isEmpty();
}

void XDisplay::pressKeys(const QString &window, const QString &keys) const
{
    xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window});
    xdotool({QStringLiteral("key"), QStringLiteral("--clearmodifiers"), keys});
}

QRect XDisplay::geometry(const QString &window) const
{
    const Run run = xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window});
    QHash<QString, int> values;
    for (const QString &line : run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        values.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1).toInt());
    return {values.value(QStringLiteral("X")), values.value(QStringLiteral("Y")), values.value(QStringLiteral("WIDTH")),
            values.value(QStringLiteral("HEIGHT"))};
}

bool XDisplay::moveWindow(const QString &window, const QPoint &to) const
{
    xdotool({QStringLiteral("windowmove"), window, QString::number(to.x()), QString::number(to.y())});
    return eventually([&] { return geometry(window).topLeft() == to; }, 10000);
}

void XDisplay::click(const QPoint &at) const
{
    xdotool({QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y()), QStringLiteral("click"),
             QStringLiteral("1")});
}

} // namespace E2E
