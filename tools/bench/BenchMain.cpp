// generation-bench: measures, on this machine, what the generation
// subsystem promises about speed. Run by hand; ctest never runs it.
//
//   generation-bench            every measurement
//   generation-bench drift      (a) drift validation beside ImageMagick
//   generation-bench overhead   (b) the run's own cost per screenshot
//   generation-bench generator  (c) the command-line generator's cost per
//                               screenshot and its xcodebuild invocations
//   generation-bench localization  (d) what the localization check adds to a run
//   generation-bench contact-sheet (e) the contact sheet of 500 screenshots

#include "DriftBench.h"
#include "GeneratorOverheadBench.h"
#include "ReviewBench.h"
#include "RunOverheadBench.h"

#include <QGuiApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv); // text drawing needs the GUI module, never a display
    QTextStream out(stdout);
    const QString which = app.arguments().value(1);
    if (which.isEmpty() || which == QLatin1String("drift"))
        runDriftBench(out);
    out.flush();
    bool measured = true;
    if (which.isEmpty() || which == QLatin1String("overhead"))
        measured = runOverheadBench(out) && measured;
    out.flush();
    if (which.isEmpty() || which == QLatin1String("generator"))
        measured = generatorOverheadBench(out) && measured;
    out.flush();
    if (which.isEmpty() || which == QLatin1String("localization"))
        measured = runLocalizationCheckBench(out) && measured;
    out.flush();
    if (which.isEmpty() || which == QLatin1String("contact-sheet"))
        measured = runContactSheetBench(out) && measured;
    return measured ? 0 : 1;
}
