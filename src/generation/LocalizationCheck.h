#pragma once
// Whether a screenshot was ever localized: its words are held against the
// words of the same checkpoint's screenshot in the run's first language on
// the same device. An app that ignores the language shows the same words in
// every language; numbers, dates, times and prices change with the locale
// even then, so only words made of letters count.

#include <QString>
#include <QStringList>

namespace LocalizationCheck {

// The words of recognised text that are made of letters only, case-folded,
// in order. Anything but a letter or a digit separates words (recognition
// often glues a date to the word before it: "Japan:6A"); a word with a
// digit in it (12, 3rd, 6A) is dropped; single letters are noise.
QStringList letterWords(const QString &text);

// Distinct words the two screens share, as a share of the screen with fewer
// words (0 … 1): a date written the Japanese way loses its month name
// without making the screen any more translated. Two screens without words
// count as the same; words against none as different.
double similarity(const QStringList &words, const QStringList &firstLanguageWords);

// At or above this share a screenshot looks like the first language's. A
// little below 1 because recognition misreads a letter now and then.
constexpr double sameWordsThreshold = 0.8;

// True when the screenshot looks the same as the first language's: a
// translated screen shares only names and symbols, never most of its words.
bool looksUnlocalized(const QStringList &words, const QStringList &firstLanguageWords);

// "<language> <file> looks the same as <first language>: is the app localized for <language>?"
QString warningText(const QString &language, const QString &file, const QString &firstLanguage);

} // namespace LocalizationCheck
