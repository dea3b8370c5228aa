#include "PathSanitizer.h"

#include <QChar>
#include <QList>
#include <QTextBoundaryFinder>

namespace {

bool isAllowed(char32_t scalar)
{
    return QChar::isLetterOrNumber(scalar) || QChar::isMark(scalar) || scalar == U'-'
           || scalar == U'_' || scalar == U'.';
}

QString trimDashesAndDots(const QString &text)
{
    qsizetype start = 0;
    qsizetype end = text.size();
    const auto trimmable = [](QChar c) { return c == QLatin1Char('-') || c == QLatin1Char('.'); };
    while (start < end && trimmable(text.at(start)))
        ++start;
    while (end > start && trimmable(text.at(end - 1)))
        --end;
    return text.mid(start, end - start);
}

// The longest beginning of `text` that takes at most `maximumBytes` bytes of
// UTF-8 and ends on a character boundary (a letter keeps its marks).
QString cutToBytes(const QString &text, int maximumBytes)
{
    if (text.toUtf8().size() <= maximumBytes)
        return text;
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    qsizetype bytes = 0;
    for (qsizetype next = boundaries.toNextBoundary(); next > 0; next = boundaries.toNextBoundary()) {
        bytes += QStringView(text).mid(end, next - end).toUtf8().size();
        if (bytes > maximumBytes)
            break;
        end = next;
    }
    return text.left(end);
}

} // namespace

QString PathSanitizer::component(const QString &text)
{
    QString result;
    bool lastWasDash = false;
    for (const uint ucs4 : text.toUcs4()) {
        const char32_t scalar = ucs4;
        if (!isAllowed(scalar) || scalar == U'-') {
            if (!lastWasDash)
                result.append(QLatin1Char('-'));
            lastWasDash = true;
        } else {
            result.append(QString::fromUcs4(&scalar, 1));
            lastWasDash = false;
        }
    }
    result = trimDashesAndDots(cutToBytes(trimDashesAndDots(result), maximumBytes));
    return result.isEmpty() ? QStringLiteral("capture") : result;
}
