#pragma once
// A failure that ends the invocation the way the imitated tool ends it:
// its own text on standard error (and sometimes standard output) and its
// own exit status. Commands throw it; main prints it and exits.

#include <QString>

struct ToolFailure
{
    QString standardError;
    int exitStatus = 1;
    QString standardOutput;
};
