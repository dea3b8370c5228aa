#pragma once
class QTextStream;

// False when the generator's run could not be measured.
bool generatorOverheadBench(QTextStream &out);
