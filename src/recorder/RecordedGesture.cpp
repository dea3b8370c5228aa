#include "RecordedGesture.h"

#include <algorithm>
#include <cmath>

namespace RecordedGesture {

qint64 wholePoint(double value)
{
    return static_cast<qint64>(std::round(value)); // std::round: half away from zero
}

double swipeDuration(double heldSeconds)
{
    // The 0.05 floor never decides the result; it mirrors the replay's own
    // minimum press and is kept so both read the same.
    return std::min(maximumSwipeDuration, std::max(minimumSwipeDuration, std::max(0.05, heldSeconds)));
}

OperationDraft fromPressAndRelease(const Touch &press, const Touch &release)
{
    const double distance = std::hypot(release.screenPoint.x() - press.screenPoint.x(),
                                       release.screenPoint.y() - press.screenPoint.y());
    if (distance < swipeDistance)
        return OperationDraft::tap(wholePoint(press.devicePoint.x()), wholePoint(press.devicePoint.y()));
    return OperationDraft::swipe(wholePoint(press.devicePoint.x()), wholePoint(press.devicePoint.y()),
                                 wholePoint(release.devicePoint.x()), wholePoint(release.devicePoint.y()),
                                 swipeDuration(release.time - press.time));
}

} // namespace RecordedGesture
