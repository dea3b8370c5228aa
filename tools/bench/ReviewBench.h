#pragma once
class QTextStream;

// (c) What the localization check adds to a run at the stand-in's default
// pauses; (d) the contact sheet of 500 screenshots. False when a
// measurement could not be made.
bool runLocalizationCheckBench(QTextStream &out);
bool runContactSheetBench(QTextStream &out);
