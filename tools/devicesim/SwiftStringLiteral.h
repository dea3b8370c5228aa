#pragma once
// Reading a string literal of the test source's language back into the
// text it stands for, with the escapes that language knows (\\ \" \' \n \r
// \t \0 \u{hex}). Any other escape is a compile error, as it is for the
// real compiler: the runner project writer turns a backspace into \b, and
// the build must then fail.

#include <QString>
#include <variant>

namespace SwiftStringLiteral {

struct Parsed
{
    QString value;
    qsizetype end = 0; // index just after the closing quote
};

struct Error
{
    qsizetype position = 0; // index of the offending character
    QString message;
};

// Parses the literal whose opening quote is at text[start].
std::variant<Parsed, Error> parse(const QString &text, qsizetype start);

} // namespace SwiftStringLiteral
