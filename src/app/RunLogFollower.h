#pragma once
// Follows the run log for a front that shows it as it grows (a terminal, a
// log view): each call gives what was appended since the previous one, or
// the whole log when an operation replaced it (opening another project).

#include <QString>

#include <utility>

class RunLogFollower
{
public:
    RunLogFollower() = default;
    explicit RunLogFollower(QString seen) : m_seen(std::move(seen)) {}

    struct Update
    {
        QString text;          // new text, or the whole log when replaced
        bool replaced = false; // the shown text must be cleared first
    };

    Update take(const QString &log)
    {
        Update update;
        if (log != m_seen) {
            update.replaced = !log.startsWith(m_seen);
            update.text = update.replaced ? log : log.mid(m_seen.size());
            m_seen = log;
        }
        return update;
    }

private:
    QString m_seen;
};
