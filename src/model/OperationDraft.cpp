#include "OperationDraft.h"

#include "replay/RealNumberText.h"

namespace {
template <class... Ts> struct Overloaded : Ts... { using Ts::operator()...; };
template <class... Ts> Overloaded(Ts...) -> Overloaded<Ts...>;
}

QString OperationDraft::caseName() const
{
    return std::visit(Overloaded{
                          [](const TapOperation &) { return QStringLiteral("tap"); },
                          [](const SwipeOperation &) { return QStringLiteral("swipe"); },
                          [](const TypeOperation &) { return QStringLiteral("type"); },
                          [](const WaitOperation &) { return QStringLiteral("wait"); },
                      },
                      m_value);
}

QString OperationDraft::identity() const
{
    return std::visit(
        Overloaded{
            [](const TapOperation &t) { return QStringLiteral("tap-%1-%2").arg(t.x).arg(t.y); },
            [](const SwipeOperation &s) {
                return QStringLiteral("swipe-%1-%2-%3-%4-%5")
                    .arg(s.startX).arg(s.startY).arg(s.endX).arg(s.endY)
                    .arg(RealNumberText::shortest(s.duration));
            },
            [](const TypeOperation &t) { return QStringLiteral("type-") + t.text; },
            [](const WaitOperation &w) { return QStringLiteral("wait-") + RealNumberText::shortest(w.seconds); },
        },
        m_value);
}
