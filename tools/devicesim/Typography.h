#pragma once
// The fonts the stand-in draws with: DejaVu (fonts-dejavu-core) loaded from
// its files when they are there, so that the text in screenshots is the
// same on every machine and can be read back by text recognition.

#include <QColor>
#include <QFont>

struct TextStyle
{
    double size = 17; // points
    bool bold = false;
    QColor color = QColor(0, 0, 0);
};

namespace Typography {
// Loads the font files once; harmless to call again.
void load();
QFont font(double size, bool bold);

// The text styles of the platform's type ramp, in points.
inline TextStyle largeTitle() { return {33, true, QColor(0, 0, 0)}; }
inline TextStyle title() { return {26, true, QColor(0, 0, 0)}; }
inline TextStyle headline() { return {19, true, QColor(0, 0, 0)}; }
inline TextStyle body() { return {17, false, QColor(0, 0, 0)}; }
inline TextStyle secondary() { return {15, false, QColor(0x6C, 0x6C, 0x72)}; }
inline TextStyle footnote() { return {13, false, QColor(0x6C, 0x6C, 0x72)}; }
} // namespace Typography
