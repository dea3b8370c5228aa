#pragma once
// Names a checkpoint after the most prominent text on its screen, such as a
// screen title: recognised lines that are no good as a name (clock times,
// numbers, button captions, very short or long lines) are dropped, the rest
// are scored by height on the screen, size and centring, and the best line
// becomes a file-name-safe name.

#include "platform/PlatformServices.h"

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <optional>

namespace AutoScreenshotNamer {

// Lines whose whole text is one of these never name a screen.
const QStringList &blockedTexts();
// Button captions; they lower a line's score.
const QStringList &blockedButtonTexts();

// Line feeds and runs of white space become single blanks; ends trimmed.
QString normalizedText(const QString &text);

struct Candidate
{
    QString text;
    QRectF box; // normalised 0...1, origin at the bottom left

    bool isUsable() const;
    double score() const;
};

// The name of the best usable candidate, or nothing. Equal scores keep the
// recogniser's order.
std::optional<QString> suggestName(const QList<Candidate> &candidates);

// Recognises the text of the image file off the main thread and names it.
// An image that cannot be read gives nothing.
std::optional<QString> suggestName(const QString &imagePath, PlatformServices &platform);

} // namespace AutoScreenshotNamer
