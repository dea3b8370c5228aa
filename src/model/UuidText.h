#pragma once
// Identities are canonical upper-case UUID strings (36 characters, no braces).

#include <QString>
#include <QUuid>

namespace UuidText {
inline QString fromUuid(const QUuid &uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}
inline QString create() { return fromUuid(QUuid::createUuid()); }
}
