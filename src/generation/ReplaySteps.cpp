// A recorded flow as replay steps: each checkpoint's navigation, then a
// screenshot named after the checkpoint. A generator configuration likewise,
// with a launch before every screen.

#include "GeneratorConfig.h"
#include "ScreenshotFileName.h"
#include "model/AppModel.h"
#include "simulator/SimctlArguments.h"

#include <algorithm>

namespace {

template <class... Ts> struct Overloaded : Ts... { using Ts::operator()...; };
template <class... Ts> Overloaded(Ts...) -> Overloaded<Ts...>;

constexpr double pressDuration = 0.45;

XCTestReplayStep step(XCTestReplayStep::Kind kind, double duration, const QString &text = {},
                      const QString &outputPath = {})
{
    return XCTestReplayStep{kind, 0, 0, 0, 0, duration, text, outputPath};
}

XCTestReplayStep replayStep(const OperationDraft &operation)
{
    using Kind = XCTestReplayStep::Kind;
    return std::visit(
        Overloaded{
            [](const TapOperation &t) { return XCTestReplayStep{Kind::tap, t.x, t.y, 0, 0, pressDuration, {}, {}}; },
            [](const SwipeOperation &s) {
                return XCTestReplayStep{Kind::swipe, s.startX, s.startY, s.endX, s.endY, s.duration, {}, {}};
            },
            [](const TypeOperation &t) { return step(Kind::type, pressDuration, t.text); },
            [](const WaitOperation &w) { return step(Kind::wait, AppModel::replayWait(w.seconds)); },
        },
        operation.value());
}

} // namespace

double AppModel::replayWait(double recordedSeconds)
{
    // A replay runs somewhat faster than the person who recorded it, but
    // never without a pause and never with a long one.
    if (!(recordedSeconds > 0))
        return 0;
    return std::min(std::max(recordedSeconds * replayWaitScale, minimumReplayWait), maximumReplayWait);
}

QList<XCTestReplayStep> AppModel::replaySteps(const QList<ScreenDraft> &screens)
{
    QList<XCTestReplayStep> steps;
    for (qsizetype i = 0; i < screens.size(); ++i) {
        const ScreenDraft &screen = screens.at(i);
        for (const OperationDraft &operation : screen.operations)
            steps.append(replayStep(operation));
        steps.append(step(XCTestReplayStep::Kind::screenshot, pressDuration, {},
                          screenshotFileName(i + 1, screen.name)));
    }
    return steps;
}

QList<XCTestReplayStep> AppModel::replaySteps(const GeneratorConfig &config, const QString &language)
{
    QList<XCTestReplayStep> steps;
    for (qsizetype i = 0; i < config.screens.size(); ++i) {
        const GeneratorScreen &screen = config.screens.at(i);
        // Each screen starts from a fresh launch: the language first, then
        // the arguments of every launch, then the screen's own (its state).
        const QStringList arguments = SimctlArguments::languageLaunchArguments(language) + config.launchArguments
                                      + screen.launchArguments;
        steps.append(XCTestReplayStep::launch(arguments, config.launchWait(screen)));
        for (const OperationDraft &operation : screen.operations)
            steps.append(replayStep(operation));
        steps.append(step(XCTestReplayStep::Kind::screenshot, pressDuration, {},
                          screenshotFileName(i + 1, screen.name)));
    }
    return steps;
}
