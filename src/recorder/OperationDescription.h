#pragma once
// How a recorded operation reads in the recorder's status line:
// "Tap 120, 640", "Swipe 10,20 to 30,40 in 0.15s", "Type \"hello\"", "Wait 1.5s".
// A tap has a blank after its comma and a swipe has none; both are the
// established wording.

#include "model/OperationDraft.h"

#include <QString>

namespace OperationDescription {
QString text(const OperationDraft &operation);
}
