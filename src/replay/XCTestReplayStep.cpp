#include "XCTestReplayStep.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>

namespace {

using Kind = XCTestReplayStep::Kind;

constexpr std::array<std::pair<Kind, const char *>, 6> rawValues{{
    {Kind::tap, "tap"},
    {Kind::swipe, "swipe"},
    {Kind::type, "type"},
    {Kind::wait, "wait"},
    {Kind::screenshot, "screenshot"},
    {Kind::launch, "launch"},
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

XCTestReplayStep XCTestReplayStep::launch(const QStringList &arguments, double waitSeconds)
{
    const QByteArray json = QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact);
    return XCTestReplayStep{Kind::launch, 0, 0, 0, 0, waitSeconds, QString::fromUtf8(json), {}};
}

QStringList XCTestReplayStep::launchArguments() const
{
    if (kind != Kind::launch)
        return {};
    QStringList arguments;
    for (const QJsonValue &value : QJsonDocument::fromJson(text.toUtf8()).array())
        arguments.append(value.toString());
    return arguments;
}

size_t qHash(const XCTestReplayStep &step, size_t seed) noexcept
{
    return qHashMulti(seed, static_cast<int>(step.kind), step.x, step.y, step.endX, step.endY,
                      step.duration, step.text, step.outputPath);
}
