// generation-bench: measures, on this machine, what the generation
// subsystem promises about speed. Run by hand; ctest never runs it.
//
//   generation-bench            both measurements
//   generation-bench drift      (a) drift validation beside ImageMagick
//   generation-bench overhead   (b) the run's own cost per screenshot

#include "DriftBench.h"
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
    if (which.isEmpty() || which == QLatin1String("overhead"))
        return runOverheadBench(out) ? 0 : 1;
    return 0;
}
