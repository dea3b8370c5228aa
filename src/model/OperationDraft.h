#pragma once
// One recorded navigation step: a tap or swipe in whole device points, typed
// text, or a wait in seconds.

#include <QString>
#include <variant>

struct TapOperation
{
    qint64 x = 0;
    qint64 y = 0;
    bool operator==(const TapOperation &) const = default;
};

struct SwipeOperation
{
    qint64 startX = 0;
    qint64 startY = 0;
    qint64 endX = 0;
    qint64 endY = 0;
    double duration = 0;
    bool operator==(const SwipeOperation &) const = default;
};

struct TypeOperation
{
    QString text;
    bool operator==(const TypeOperation &) const = default;
};

struct WaitOperation
{
    double seconds = 0;
    bool operator==(const WaitOperation &) const = default;
};

class OperationDraft
{
public:
    using Value = std::variant<TapOperation, SwipeOperation, TypeOperation, WaitOperation>;

    OperationDraft() : m_value(WaitOperation{}) {}
    OperationDraft(Value value) : m_value(std::move(value)) {}

    static OperationDraft tap(qint64 x, qint64 y) { return Value(TapOperation{x, y}); }
    static OperationDraft swipe(qint64 startX, qint64 startY, qint64 endX, qint64 endY, double duration)
    {
        return Value(SwipeOperation{startX, startY, endX, endY, duration});
    }
    static OperationDraft type(const QString &text) { return Value(TypeOperation{text}); }
    static OperationDraft wait(double seconds) { return Value(WaitOperation{seconds}); }

    const Value &value() const { return m_value; }
    template <class T> const T *as() const { return std::get_if<T>(&m_value); }
    bool isWait() const { return as<WaitOperation>() != nullptr; }

    // The case name used as the operation's only JSON key: tap, swipe, type, wait.
    QString caseName() const;
    // The derived identity: "tap-120-640", "wait-1.5", "type-hello", ...
    QString identity() const;

    bool operator==(const OperationDraft &) const = default;

private:
    Value m_value;
};
