#pragma once
// Follows the progress file the UI test appends to: each call hands the lines
// added since the previous call to the handler, in file order, exactly once.

#include "XCUITestReplay.h"

class ProgressCursor
{
public:
    ProgressCursor(QString progressFile, XCUITestReplay::ProgressHandler handler);

    // Reads the whole file; does nothing while it is missing or unreadable.
    void deliver();

private:
    QString m_progressFile;
    XCUITestReplay::ProgressHandler m_handler;
    qsizetype m_delivered = 0;
};
