#pragma once
// Dates in project documents are seconds since 2001-01-01T00:00:00Z, kept as
// a double so that a value read from a file is written back bit for bit.

#include <QDateTime>

using ReferenceSeconds = double;

namespace ReferenceDate {
QDateTime epoch();
ReferenceSeconds now();
ReferenceSeconds fromDateTime(const QDateTime &dateTime);
QDateTime toDateTime(ReferenceSeconds seconds);
}
