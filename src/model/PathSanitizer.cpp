#include "PathSanitizer.h"

#include <QChar>
#include <QList>

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

} // namespace

QString PathSanitizer::component(const QString &text)
{
    QString result;
    int scalars = 0;
    bool lastWasDash = false;
    for (const uint ucs4 : text.toUcs4()) {
        const char32_t scalar = ucs4;
        if (!isAllowed(scalar) || scalar == U'-') {
            if (!lastWasDash)
                result.append(QLatin1Char('-'));
            lastWasDash = true;
        } else {
            if (scalars >= maximumLength)
                break;
            result.append(QString::fromUcs4(&scalar, 1));
            lastWasDash = false;
        }
        ++scalars;
    }
    result = trimDashesAndDots(result);
    return result.isEmpty() ? QStringLiteral("capture") : result;
}
