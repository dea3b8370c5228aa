#pragma once
// The replay runner's own error: it carries the text the user sees, such as
// "Command failed: xcodebuild ..." with the build tool's complaint. File-system
// failures are not wrapped in it; they keep their own description.

#include <QString>
#include <stdexcept>

class XCTestReplayError : public std::runtime_error
{
public:
    explicit XCTestReplayError(const QString &message)
        : std::runtime_error(message.toStdString()), m_message(message) {}
    // `details`: the whole text when `message` shows only the end of a
    // tool's long output.
    XCTestReplayError(const QString &message, const QString &details)
        : std::runtime_error(message.toStdString()), m_message(message), m_details(details) {}

    const QString &message() const noexcept { return m_message; }
    const QString &details() const noexcept { return m_details; }

private:
    QString m_message;
    QString m_details;
};
