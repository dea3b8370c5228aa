#pragma once
// A drifted screenshot beside the reference it drifted from: where the two
// differ is tinted, so the reviewer sees at a glance what changed (a dialog,
// a different screen, text that moved).

#include <QImage>
#include <QSize>

namespace ReviewComparison {

// Both images scaled to `size`; the drifted one comes back with every pixel
// that differs clearly from the reference tinted red and the rest dimmed.
// An empty image when either cannot be used.
QImage highlightDifferences(const QImage &drifted, const QImage &reference, const QSize &size);

} // namespace ReviewComparison
