#include "OutputTail.h"

namespace OutputTail {

QString of(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    if (bytes.size() <= maximumBytes)
        return text;
    qsizetype start = bytes.size() - maximumBytes;
    while (start < bytes.size() && (static_cast<unsigned char>(bytes.at(start)) & 0xC0) == 0x80)
        ++start; // not inside a character
    // Whole lines read better: begin after the first line break, unless it ends the text.
    const qsizetype lineEnd = bytes.indexOf('\n', start);
    if (lineEnd >= 0 && lineEnd + 1 < bytes.size())
        start = lineEnd + 1;
    return QStringLiteral("[the first %1 bytes are left out]\n").arg(start) + QString::fromUtf8(bytes.mid(start));
}

CommandFailure commandFailure(const QString &command, const QStringList &arguments,
                              const QString &standardOutput, const QString &standardError)
{
    const QString commandLine = QStringLiteral("Command failed: ") + command + QLatin1Char(' ')
                                + arguments.join(QLatin1Char(' ')) + QLatin1Char('\n');
    const QString complaint = standardError.isEmpty() ? standardOutput : standardError;
    const QString shown = of(complaint);
    if (shown == complaint)
        return {commandLine + complaint, QString()};
    return {commandLine + shown, commandLine + complaint};
}

} // namespace OutputTail
