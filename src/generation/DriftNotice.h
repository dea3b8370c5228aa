#pragma once
// What the user is shown when a run stopped because screenshots drifted from
// their recorded references: a heading and what usually causes it.

#include <QString>

struct DriftNotice
{
    QString heading;
    QString explanation;
};
