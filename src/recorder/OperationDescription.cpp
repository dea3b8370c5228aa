#include "OperationDescription.h"

#include "replay/RealNumberText.h"

namespace OperationDescription {

QString text(const OperationDraft &operation)
{
    if (const auto *tap = operation.as<TapOperation>())
        return QStringLiteral("Tap %1, %2").arg(tap->x).arg(tap->y);
    if (const auto *swipe = operation.as<SwipeOperation>())
        return QStringLiteral("Swipe %1,%2 to %3,%4 in %5s")
            .arg(swipe->startX).arg(swipe->startY).arg(swipe->endX).arg(swipe->endY)
            .arg(RealNumberText::shortest(swipe->duration));
    if (const auto *type = operation.as<TypeOperation>())
        return QStringLiteral("Type \"") + type->text + QLatin1Char('"');
    const auto *wait = operation.as<WaitOperation>();
    return QStringLiteral("Wait ") + RealNumberText::shortest(wait->seconds) + QLatin1Char('s');
}

} // namespace OperationDescription
