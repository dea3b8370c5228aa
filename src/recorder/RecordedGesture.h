#pragma once
// Turns one press and its release on the device screen into a recorded
// operation: a tap when the pointer barely moved, a swipe otherwise.

#include "model/OperationDraft.h"

#include <QPointF>

namespace RecordedGesture {

// Desktop points the pointer may travel between press and release and
// still count as a tap.
constexpr double swipeDistance = 10.0;
constexpr double minimumSwipeDuration = 0.15;
constexpr double maximumSwipeDuration = 2.0;

struct Touch
{
    QPointF screenPoint; // desktop point (decides tap or swipe)
    QPointF devicePoint; // device point, not yet rounded
    double time = 0;     // seconds
};

// Whole device points, rounded half away from zero.
qint64 wholePoint(double value);

// How long the replayed swipe presses, from how long the user held it.
double swipeDuration(double heldSeconds);

// A tap at the press position (the release position is not used), or a
// swipe from press to release.
OperationDraft fromPressAndRelease(const Touch &press, const Touch &release);

} // namespace RecordedGesture
