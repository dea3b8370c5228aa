#pragma once
// The old-style property-list text that the platform prints for a
// dictionary (its "description"), as `simctl listapps` shows it: keys in
// order, four blanks per level, a nested collection opened on the key's
// line after its own indentation, strings quoted unless they are a plain
// word, non-ASCII characters written as \Uxxxx escapes.

#include <QString>
#include <QVariant>

namespace PlistDescription {
// `value` is a QVariantMap (dictionary), QVariantList (array), a number or
// a string, nested freely.
QString text(const QVariant &value);
// A single string as it appears in the text (quoted and escaped if needed).
QString quoted(const QString &string);
}
