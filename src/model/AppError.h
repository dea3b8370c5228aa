#pragma once
// The application's one error type: it carries the text the user sees.
// File-system and platform failures are also raised as AppError, with their
// own description as the text, so every caller can show `what()` as it is.

#include <QString>
#include <stdexcept>

class AppError : public std::runtime_error
{
public:
    explicit AppError(const QString &message)
        : std::runtime_error(message.toStdString()), m_message(message) {}

    const QString &message() const noexcept { return m_message; }

private:
    QString m_message;
};
