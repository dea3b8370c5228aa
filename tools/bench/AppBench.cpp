// app-bench: measures, on this machine, what the desktop application
// promises about speed and memory. Run by hand; ctest never runs it.
//
//   app-bench            both measurements
//   app-bench startup    (a) the window shown with 50 projects and 500 screenshots
//   app-bench gallery    (b) 1,000 screenshots of 1290 x 2796 scrolled through
//
// Without a display the window is drawn offscreen; with DISPLAY set it is
// shown on that display.

#include "Dialogs.h"
#include "GalleryModel.h"
#include "MainWindow.h"
#include "ReviewPanel.h"
#include "model/AppModel.h"
#include "model/ProjectCoding.h"
#include "model/UuidText.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QListView>
#include <QListWidget>
#include <QPainter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtConcurrent/QtConcurrentMap>
#include <sys/resource.h>

namespace {

constexpr int screenshotWidth = 1290;
constexpr int screenshotHeight = 2796;

// Resident memory now, in megabytes (Linux); 0 where it cannot be read.
double residentMegabytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toDouble() * double(getpagesize()) / (1024.0 * 1024.0) : 0;
}

// The most memory this process ever held, in megabytes.
double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
#ifdef __APPLE__
    return double(usage.ru_maxrss) / (1024.0 * 1024.0);
#else
    return double(usage.ru_maxrss) / 1024.0;
#endif
}

// Full-size screenshots that look like app screens, written side by side.
void writeScreenshots(const QString &folder, int count)
{
    QDir().mkpath(folder);
    QList<int> numbers;
    for (int i = 1; i <= count; ++i)
        numbers.append(i);
    QtConcurrent::blockingMap(numbers, [folder](int number) {
        QImage image(screenshotWidth, screenshotHeight, QImage::Format_RGB32);
        image.fill(QColor(242, 242, 247));
        QPainter p(&image);
        p.fillRect(QRect(90, 520, 1110, 780), QColor::fromHsv(number * 37 % 360, 160, 230));
        for (int row = 0; row < 9; ++row)
            p.fillRect(QRect(90, 1400 + row * 150, 1110, 140), row % 2 ? Qt::white : QColor(230, 230, 235));
        p.end();
        image.save(QStringLiteral("%1/%2-screen.png").arg(folder).arg(number, 4, 10, QLatin1Char('0')));
    });
}

// A data root holding `projects` projects, the current one with `screenshots`
// generated screenshots in one language and device.
QString makeRoot(const QTemporaryDir &dir, int projects, int screenshots)
{
    AppModel model(dir.path(), std::make_unique<ScriptedPlatformServices>());
    model.loadSavedProject();
    QDir().mkpath(model.projectsDirectory());
    for (int i = 1; i < projects; ++i) {
        ScreenshotProject other;
        other.projectID = UuidText::create();
        other.projectName = QStringLiteral("Project %1").arg(i);
        other.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE"), QStringLiteral("fr-FR")};
        other.screens = QList<ScreenDraft>(6);
        other.updatedAt = 700000000 + i;
        QFile file(model.projectFileURL(*other.projectID));
        if (file.open(QIODevice::WriteOnly))
            file.write(ProjectCoding::encodeBytes(other));
    }
    writeScreenshots(model.project().outputDirectory + QStringLiteral("/de-DE/iPhone 15 Pro"), screenshots);
    model.saveProject(); // the newest: it stays the current one
    return dir.path();
}

struct ShownWindow
{
    std::unique_ptr<AppModel> model;
    std::unique_ptr<MainWindow> window;
};

// What the application does until its window shows the library and the
// gallery: load the project, list the library and the screenshots, build
// and draw the window.
ShownWindow showWindow(const QString &root, WidgetDialogs &dialogs)
{
    ShownWindow shown;
    shown.model = std::make_unique<AppModel>(root, std::make_unique<ScriptedPlatformServices>());
    shown.model->loadSavedProject();
    shown.model->refreshReviewImages();
    shown.window = std::make_unique<MainWindow>(*shown.model, dialogs);
    shown.window->showPanel(MainWindow::reviewPanel);
    shown.window->show();
    QCoreApplication::processEvents();
    shown.window->grab(); // every visible widget drawn once
    return shown;
}

void runStartupBench(QTextStream &out)
{
    out << "(a) Window shown: 50 projects in the library, 500 screenshots of " << screenshotWidth << " x "
        << screenshotHeight << " in the gallery\n";
    out.flush();
    QTemporaryDir dir;
    const QString root = makeRoot(dir, 50, 500);
    WidgetDialogs dialogs;
    QList<double> times;
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer timer;
        timer.start();
        ShownWindow shown = showWindow(root, dialogs);
        times.append(double(timer.nsecsElapsed()) / 1e6);
        if (i == 0)
            out << QStringLiteral("    library rows %1, screenshots found %2, gallery rows %3\n")
                       .arg(shown.model->projectLibrary().size())
                       .arg(shown.model->reviewImages().size())
                       .arg(shown.window->review()->galleryModel()->rowCount());
    }
    std::sort(times.begin(), times.end());
    out << QStringLiteral("    window shown (median of 5)        %1 ms  (target: under 1000 ms)\n").arg(times.at(2), 8, 'f', 1);
    out.flush();
}

void runGalleryBench(QTextStream &out)
{
    out << "\n(b) Gallery of 1,000 screenshots of " << screenshotWidth << " x " << screenshotHeight
        << ", scrolled from top to bottom\n";
    out.flush();
    QTemporaryDir dir;
    const QString root = makeRoot(dir, 1, 1000);
    const double before = residentMegabytes();
    WidgetDialogs dialogs;
    ShownWindow shown = showWindow(root, dialogs);
    QListView *list = shown.window->review()->imageList();

    // Page by page, as a user drags the scroll bar: the longest a page takes
    // on the main thread is what the user would feel as a stutter.
    QScrollBar *bar = list->verticalScrollBar();
    double slowestPage = 0;
    int pages = 0;
    QElapsedTimer whole;
    whole.start();
    for (int value = 0;; value += bar->pageStep()) {
        QElapsedTimer page;
        page.start();
        bar->setValue(value);
        list->viewport()->grab();
        QCoreApplication::processEvents();
        slowestPage = std::max(slowestPage, double(page.nsecsElapsed()) / 1e6);
        ++pages;
        if (value >= bar->maximum())
            break;
    }
    const double scrolled = double(whole.nsecsElapsed()) / 1e6;
    // Then every thumbnail made: what the window holds at most.
    QElapsedTimer decoding;
    decoding.start();
    GalleryModel *gallery = shown.window->review()->galleryModel();
    for (int row = 0; row < gallery->rowCount(); ++row)
        gallery->index(row).data(Qt::DecorationRole);
    int ready = 0;
    while (decoding.elapsed() < 900000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        ready = 0;
        for (int row = 0; row < gallery->rowCount(); ++row)
            ready += gallery->index(row).data(Qt::DecorationRole).isNull() ? 0 : 1;
        if (ready == gallery->rowCount())
            break;
    }
    const double decoded = double(decoding.nsecsElapsed()) / 1e6;
    out << QStringLiteral("    scrolled %1 pages in %2 ms; slowest page on the main thread %3 ms\n")
               .arg(pages).arg(scrolled, 0, 'f', 1).arg(slowestPage, 0, 'f', 1);
    out << QStringLiteral("    %1 of %2 thumbnails decoded in the background in %3 ms\n")
               .arg(ready).arg(gallery->rowCount()).arg(decoded, 0, 'f', 1);
    out << QStringLiteral("    memory: %1 MB before the window, %2 MB now, %3 MB at most  (target: under 300 MB)\n")
               .arg(before, 0, 'f', 1).arg(residentMegabytes(), 0, 'f', 1).arg(peakMegabytes(), 0, 'f', 1);
    out.flush();
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTextStream out(stdout);
    const QString which = app.arguments().value(1);
    if (which.isEmpty() || which == QLatin1String("startup"))
        runStartupBench(out);
    if (which.isEmpty() || which == QLatin1String("gallery"))
        runGalleryBench(out);
    return 0;
}
