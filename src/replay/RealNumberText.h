#pragma once
// Real numbers shown to users and written into generated sources print in
// the shortest form that reads back exactly, always with a fractional part or
// an exponent: 2.0, 0.15, 60.0, -3.0, 5e-05, 1e+16.

#include <QString>

namespace RealNumberText {
QString shortest(double value);
}
