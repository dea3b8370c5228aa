#pragma once
// Plain Unicode code-point order, case-sensitive and without locale. QString's
// own operator< compares UTF-16 units, which puts characters beyond the
// Basic Multilingual Plane before some that are smaller in code points.

#include <QString>

namespace CodePointOrder {

inline bool less(const QString &a, const QString &b)
{
    return a.toUcs4() < b.toUcs4();
}

// For ordered containers and algorithms that take a comparison object.
struct Less
{
    bool operator()(const QString &a, const QString &b) const { return less(a, b); }
};

} // namespace CodePointOrder
