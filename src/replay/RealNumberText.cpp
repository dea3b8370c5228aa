#include "RealNumberText.h"

#include <charconv>
#include <cmath>
#include <string>

namespace RealNumberText {

QString shortest(double value)
{
    if (std::isnan(value))
        return QStringLiteral("nan");
    if (std::isinf(value))
        return value < 0 ? QStringLiteral("-inf") : QStringLiteral("inf");
    if (value == 0)
        return std::signbit(value) ? QStringLiteral("-0.0") : QStringLiteral("0.0");

    // Shortest round-trip digits in scientific form, e.g. "1.5e-01".
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    std::string scientific(buffer, result.ptr);
    const auto ePos = scientific.find('e');
    std::string mantissa = scientific.substr(0, ePos);
    const int exponent = std::stoi(scientific.substr(ePos + 1));

    const bool negative = mantissa.front() == '-';
    if (negative)
        mantissa.erase(0, 1);
    std::string digits;
    for (char c : mantissa)
        if (c != '.')
            digits += c;

    std::string text;
    if (exponent < -4 || exponent >= 16) {
        text = digits.substr(0, 1);
        if (digits.size() > 1)
            text += "." + digits.substr(1);
        char exp[16]; // "e-308" at most; room for any int keeps the compiler sure of it
        std::snprintf(exp, sizeof exp, "e%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
        text += exp;
    } else if (exponent < 0) {
        text = "0." + std::string(static_cast<size_t>(-exponent - 1), '0') + digits;
    } else {
        const auto integerDigits = static_cast<size_t>(exponent + 1);
        if (digits.size() <= integerDigits) {
            text = digits + std::string(integerDigits - digits.size(), '0') + ".0";
        } else {
            text = digits.substr(0, integerDigits) + "." + digits.substr(integerDigits);
        }
    }
    return QString::fromStdString((negative ? "-" : "") + text);
}

} // namespace RealNumberText
