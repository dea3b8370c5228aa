#pragma once
// Names in the order a file browser shows them: case-insensitive, with runs
// of digits compared by their value (App 2 before App 10, 9-home.png before
// 10-end.png).

#include <QString>

namespace NaturalOrder {
// Negative, zero or positive as `a` sorts before, with or after `b`.
int compare(const QString &a, const QString &b);
}
