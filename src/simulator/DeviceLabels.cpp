#include "DeviceLabels.h"

namespace DeviceLabels {

QString describe(const QString &name, const QString &udid, const QString &state)
{
    const QString text = QStringLiteral("%1 (%2)").arg(name, udid);
    return state.isEmpty() ? text : text + QStringLiteral(", ") + state;
}

} // namespace DeviceLabels
