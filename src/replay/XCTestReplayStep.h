#pragma once
// One step of a replayed flow as the generated UI test performs it:
// coordinates in device points from the top-left corner of the target app's
// window, a duration in seconds, the text to type, or the screenshot's path.
//
// A launch step (re)starts the app with launch arguments and then waits its
// duration; it lets one build and test show several screens that the app
// reaches by launch state. Its `text` holds the arguments as a JSON array of
// strings, which the test source decodes exactly, whatever they contain.

#include <QHashFunctions>
#include <QString>
#include <QStringList>
#include <optional>

struct XCTestReplayStep
{
    // The raw values are what the generated test source switches on.
    enum class Kind { tap, swipe, type, wait, screenshot, launch };

    Kind kind = Kind::tap;
    qint64 x = 0;
    qint64 y = 0;
    qint64 endX = 0;     // swipes only
    qint64 endY = 0;     // swipes only
    double duration = 0; // press time of a swipe, length of a wait, wait after a launch
    QString text;        // typed text; a launch's arguments as a JSON array
    QString outputPath;  // screenshot file, relative to the output directory or absolute

    static QString rawValue(Kind kind);
    // Nothing for any string that is not exactly one of the raw values.
    static std::optional<Kind> kindFromRawValue(const QString &rawValue);

    // A launch of the app with `arguments`, then a wait of `waitSeconds`.
    static XCTestReplayStep launch(const QStringList &arguments, double waitSeconds);
    // The arguments of a launch step; empty for other kinds.
    QStringList launchArguments() const;

    friend bool operator==(const XCTestReplayStep &, const XCTestReplayStep &) = default;
};

size_t qHash(const XCTestReplayStep &step, size_t seed = 0) noexcept;
