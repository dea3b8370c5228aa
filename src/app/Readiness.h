#pragma once
// What the user is told before a run: one line of the preflight list.

#include <QString>

struct ProductPreflightCheck
{
    QString title;
    QString detail;
    bool isReady = false;
    bool operator==(const ProductPreflightCheck &) const = default;
};
