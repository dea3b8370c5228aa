#pragma once
class QTextStream;
void runDriftBench(QTextStream &out);
