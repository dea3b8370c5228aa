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
    // `details`: the whole text when `message` shows only part of it (the
    // end of a tool's long output); it belongs in the run log.
    AppError(const QString &message, const QString &details)
        : std::runtime_error(message.toStdString()), m_message(message), m_details(details) {}

    const QString &message() const noexcept { return m_message; }
    const QString &details() const noexcept { return m_details; }

private:
    QString m_message;
    QString m_details;
};
