#include "ReferenceDate.h"

#include <QTimeZone>
#include <cmath>

namespace ReferenceDate {

QDateTime epoch()
{
    return QDateTime(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
}

ReferenceSeconds now() { return fromDateTime(QDateTime::currentDateTimeUtc()); }

ReferenceSeconds fromDateTime(const QDateTime &dateTime)
{
    return static_cast<double>(epoch().msecsTo(dateTime)) / 1000.0;
}

QDateTime toDateTime(ReferenceSeconds seconds)
{
    return epoch().addMSecs(static_cast<qint64>(std::llround(seconds * 1000.0)));
}

} // namespace ReferenceDate
