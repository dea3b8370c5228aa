// Writes a runner project into the folder given as the only argument, with
// steps of every kind and awkward texts, for the project-file check.
#include "replay/XCUITestReplayInternal.h"

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: write-runner-project ROOT\n");
        return 2;
    }
    using Kind = XCTestReplayStep::Kind;
    const QList<XCTestReplayStep> steps{
        {Kind::tap, 120, 45, 0, 0, 0.45, {}, {}},
        {Kind::swipe, -3, 600, 20, 100, 0.35, {}, {}},
        {Kind::type, 0, 0, 0, 0, 0.45, QStringLiteral("Caf\u00e9 \"quoted\" \\ line\nbreak"), {}},
        {Kind::wait, 0, 0, 0, 0, 2, {}, {}},
        {Kind::screenshot, 0, 0, 0, 0, 0, {}, QStringLiteral("en/iPhone/01 Home.png")},
    };
    try {
        XCUITestReplay::writeRunnerProject(QString::fromLocal8Bit(argv[1]), QStringLiteral("com.example.app"), steps);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
