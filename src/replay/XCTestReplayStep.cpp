#include "XCTestReplayStep.h"

#include <array>

namespace {

using Kind = XCTestReplayStep::Kind;

constexpr std::array<std::pair<Kind, const char *>, 5> rawValues{{
    {Kind::tap, "tap"},
    {Kind::swipe, "swipe"},
    {Kind::type, "type"},
    {Kind::wait, "wait"},
    {Kind::screenshot, "screenshot"},
}};

} // namespace

QString XCTestReplayStep::rawValue(Kind kind)
{
    for (const auto &[candidate, raw] : rawValues)
        if (candidate == kind)
            return QString::fromLatin1(raw);
    return {};
}

std::optional<XCTestReplayStep::Kind> XCTestReplayStep::kindFromRawValue(const QString &rawValue)
{
    for (const auto &[kind, raw] : rawValues)
        if (rawValue == QLatin1String(raw))
            return kind;
    return std::nullopt;
}

size_t qHash(const XCTestReplayStep &step, size_t seed) noexcept
{
    return qHashMulti(seed, static_cast<int>(step.kind), step.x, step.y, step.endX, step.endY,
                      step.duration, step.text, step.outputPath);
}
