#pragma once
// Writes to the standard streams as UTF-8, flushed at once, so that output
// and error interleave in the order they were written even when a parent
// reads both pipes.

#include <QString>

namespace Console {
void out(const QString &text);
void err(const QString &text);
}
