#include "LocalizationCheck.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>

namespace LocalizationCheck {

QStringList letterWords(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[^\\p{L}\\p{M}\\p{N}]+"),
                                               QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression digit(QStringLiteral("\\p{N}"), QRegularExpression::UseUnicodePropertiesOption);
    QStringList words;
    for (const QString &token : text.split(separators, Qt::SkipEmptyParts))
        if (token.size() > 1 && !token.contains(digit))
            words.append(token.toCaseFolded());
    return words;
}

double similarity(const QStringList &words, const QStringList &firstLanguageWords)
{
    const QSet<QString> a(words.begin(), words.end());
    const QSet<QString> b(firstLanguageWords.begin(), firstLanguageWords.end());
    if (a.isEmpty() && b.isEmpty())
        return 1.0;
    if (a.isEmpty() || b.isEmpty())
        return 0.0;
    const qsizetype shared = QSet<QString>(a).intersect(b).size();
    return double(shared) / double(std::min(a.size(), b.size()));
}

bool looksUnlocalized(const QStringList &words, const QStringList &firstLanguageWords)
{
    return similarity(words, firstLanguageWords) >= sameWordsThreshold;
}

QString warningText(const QString &language, const QString &file, const QString &firstLanguage)
{
    return QStringLiteral("%1 %2 looks the same as %3: is the app localized for %1?").arg(language, file, firstLanguage);
}

} // namespace LocalizationCheck
