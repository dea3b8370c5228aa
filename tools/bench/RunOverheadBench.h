#pragma once
class QTextStream;

// False when the run could not be measured.
bool runOverheadBench(QTextStream &out);
