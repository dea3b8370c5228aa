#include "InstalledAppParser.h"

#include "CodePointOrder.h"
#include "NaturalOrder.h"

#include <QHash>
#include <QRegularExpression>
#include <algorithm>

namespace {

QString trimmedOf(const QString &text, const QString &characters)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && characters.contains(text.at(begin)))
        ++begin;
    while (end > begin && characters.contains(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

// `text` split at the first non-empty "=" boundary: empty pieces are
// dropped and do not count as the one split.
QStringList splitOnceAtEquals(const QString &text)
{
    QStringList pieces;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('='))
            continue;
        if (i > start)
            pieces.append(text.mid(start, i - start));
        start = i + 1;
        if (pieces.size() == 1)
            break;
    }
    if (start < text.size())
        pieces.append(text.mid(start));
    return pieces;
}

bool isFourHexDigits(const QString &text)
{
    static const QRegularExpression hex(QStringLiteral("^[0-9A-Fa-f]{4}$"));
    return hex.match(text).hasMatch();
}

// The contents of a well-formed quoted string with its escapes resolved, or
// nothing when `value` is not exactly one quoted string.
std::optional<QString> unescapedQuotedString(const QString &value)
{
    if (value.size() < 2 || !value.startsWith(QLatin1Char('"')) || !value.endsWith(QLatin1Char('"')))
        return std::nullopt;
    const QString inner = value.mid(1, value.size() - 2);
    QString result;
    for (qsizetype i = 0; i < inner.size(); ++i) {
        const QChar c = inner.at(i);
        if (c == QLatin1Char('"'))
            return std::nullopt; // an unescaped quote inside: not one string
        if (c != QLatin1Char('\\')) {
            result.append(c);
            continue;
        }
        if (++i >= inner.size())
            return std::nullopt; // the closing quote was escaped
        const QChar escaped = inner.at(i);
        const QString digits = inner.mid(i + 1, 4);
        if ((escaped == QLatin1Char('U') || escaped == QLatin1Char('u')) && isFourHexDigits(digits)) {
            result.append(QChar(digits.toUShort(nullptr, 16))); // surrogate halves pair up in UTF-16
            i += 4;
        } else if (escaped == QLatin1Char('n')) {
            result.append(QLatin1Char('\n'));
        } else if (escaped == QLatin1Char('t')) {
            result.append(QLatin1Char('\t'));
        } else {
            result.append(escaped); // \\ and \" and anything else: the character itself
        }
    }
    return result;
}

} // namespace

namespace InstalledAppParser {

std::optional<QPair<QString, QString>> field(const QString &line)
{
    const QString text = trimmedOf(line, QStringLiteral(" \t"));
    if (!text.contains(QLatin1String(" = ")) || !text.endsWith(QLatin1Char(';')))
        return std::nullopt;
    const QStringList pieces = splitOnceAtEquals(text);
    if (pieces.size() != 2)
        return std::nullopt;
    const QString key = pieces.at(0).trimmed();
    const QString value = trimmedOf(pieces.at(1).trimmed(), QStringLiteral(";")).trimmed();
    return QPair<QString, QString>(key, unescapedQuotedString(value).value_or(trimmedOf(value, QStringLiteral("\""))));
}

bool nameLess(const InstalledSimulatorApp &a, const InstalledSimulatorApp &b)
{
    const int order = NaturalOrder::compare(a.name, b.name);
    if (order != 0)
        return order < 0;
    return CodePointOrder::less(a.bundleId, b.bundleId);
}

QList<InstalledSimulatorApp> parse(const QString &output)
{
    static const QRegularExpression blockStart(QStringLiteral("^    \"([^\"]+)\" =\\s+\\{"));
    QList<InstalledSimulatorApp> apps;
    std::optional<QString> currentID;
    QHash<QString, QString> fields;

    const auto flush = [&] {
        if (currentID && !fields.isEmpty() && fields.value(QStringLiteral("ApplicationType")) == QLatin1String("User")) {
            const QString name = fields.value(QStringLiteral("CFBundleDisplayName"),
                                              fields.value(QStringLiteral("CFBundleName"), *currentID));
            apps.append({name, *currentID});
        }
        fields.clear();
        currentID.reset();
    };

    for (const QString &line : output.split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch match = blockStart.match(line);
        if (match.hasMatch()) {
            flush();
            currentID = match.captured(1);
        } else if (currentID) {
            if (const auto pair = field(line))
                fields.insert(pair->first, pair->second);
        }
    }
    flush();
    std::stable_sort(apps.begin(), apps.end(), nameLess);
    return apps;
}

} // namespace InstalledAppParser
