#include "ProgressCursor.h"

#include <QFile>
#include <QStringDecoder>

ProgressCursor::ProgressCursor(QString progressFile, XCUITestReplay::ProgressHandler handler)
    : m_progressFile(std::move(progressFile)), m_handler(std::move(handler))
{
}

void ProgressCursor::deliver()
{
    QFile file(m_progressFile);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(file.readAll());
    if (decoder.hasError())
        return;
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (lines.size() <= m_delivered)
        return;
    for (qsizetype index = m_delivered; index < lines.size(); ++index)
        m_handler(lines.at(index));
    m_delivered = lines.size();
}
