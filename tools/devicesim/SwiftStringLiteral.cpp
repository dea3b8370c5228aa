#include "SwiftStringLiteral.h"

namespace SwiftStringLiteral {

namespace {

// \u{1F600}: one to eight hex digits naming a Unicode scalar.
std::variant<char32_t, Error> unicodeEscape(const QString &text, qsizetype &i)
{
    const qsizetype escapeStart = i - 1;
    if (i + 1 >= text.size() || text[i + 1] != QLatin1Char('{'))
        return Error{escapeStart, QStringLiteral("expected hexadecimal code in braces after unicode escape")};
    const qsizetype close = text.indexOf(QLatin1Char('}'), i + 2);
    if (close < 0)
        return Error{escapeStart, QStringLiteral("expected '}' in \\u{...} escape sequence")};
    const QString digits = text.mid(i + 2, close - i - 2);
    bool ok = false;
    const uint scalar = digits.toUInt(&ok, 16);
    if (!ok || digits.isEmpty() || digits.size() > 8)
        return Error{escapeStart, QStringLiteral("\\u{...} escape sequence expects between 1 and 8 hex digits")};
    if (scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF))
        return Error{escapeStart, QStringLiteral("invalid unicode scalar")};
    i = close;
    return char32_t(scalar);
}

} // namespace

std::variant<Parsed, Error> parse(const QString &text, qsizetype start)
{
    if (start >= text.size() || text[start] != QLatin1Char('"'))
        return Error{start, QStringLiteral("expected string literal")};
    QString value;
    for (qsizetype i = start + 1; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == QLatin1Char('"'))
            return Parsed{value, i + 1};
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r'))
            break;
        if (c != QLatin1Char('\\')) {
            value += c;
            continue;
        }
        if (++i >= text.size())
            break;
        switch (text[i].unicode()) {
        case '\\': value += QLatin1Char('\\'); break;
        case '"': value += QLatin1Char('"'); break;
        case '\'': value += QLatin1Char('\''); break;
        case 'n': value += QLatin1Char('\n'); break;
        case 'r': value += QLatin1Char('\r'); break;
        case 't': value += QLatin1Char('\t'); break;
        case '0': value += QChar(0); break;
        case 'u': {
            const auto scalar = unicodeEscape(text, i);
            if (const Error *e = std::get_if<Error>(&scalar))
                return *e;
            const char32_t code = std::get<char32_t>(scalar);
            value += QString::fromUcs4(&code, 1);
            break;
        }
        default:
            return Error{i - 1, QStringLiteral("invalid escape sequence in literal")};
        }
    }
    return Error{start, QStringLiteral("unterminated string literal")};
}

} // namespace SwiftStringLiteral
