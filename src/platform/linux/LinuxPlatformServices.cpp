// The Linux desktop: on an X11 display (DISPLAY set and reachable) the
// window list, screens, pointer and a desktop-wide click monitor come from
// the X server; without one they report nothing and clicks cannot be
// recorded. Files go to the freedesktop Trash and open with the desktop's
// default application.

#include "X11ClickMonitor.h"
#include "X11Desktop.h"
#include "X11DesktopRules.h"
#include "platform/PlatformServices.h"
#include "platform/TesseractTextRecognizer.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QUrl>
#include <QWindow>
#include <unistd.h>

namespace {

const char *noDisplay = "Recording clicks needs an X11 display (set DISPLAY).";

// Deleted on a later turn of the event loop: the monitor may be stopped
// from inside one of its own handlers.
struct LaterDeleter
{
    void operator()(X11ClickMonitor *monitor) const { monitor->deleteLater(); }
};

class LinuxPlatformServices : public PlatformServices
{
public:
    QList<RawWindowInfo> onScreenWindows() override
    {
        X11Desktop *x = desktop();
        return x ? X11DesktopRules::rawWindows(X11DesktopRules::visibleFrontToBack(x->topLevels())) : QList<RawWindowInfo>();
    }

    std::optional<QRectF> mainScreenFrame() override
    {
        X11Desktop *x = desktop();
        if (!x || !x->isConnected())
            return std::nullopt;
        return QRectF(QPointF(0, 0), x->screenSize());
    }

    std::optional<QRectF> mainScreenVisibleFrame() override
    {
        X11Desktop *x = desktop();
        if (!x || !x->isConnected())
            return std::nullopt;
        return X11DesktopRules::toBottomLeft(QRectF(x->workArea()), x->screenSize().height());
    }

    bool startMouseMonitor(MouseHandler handler) override;
    void stopMouseMonitor() override
    {
        if (m_monitor)
            m_monitor->stop();
        m_monitor.reset();
    }
    std::optional<QString> mouseMonitorProblem() override;
    void setMouseMonitorEndHandler(MonitorEndHandler handler) override { m_endHandler = std::move(handler); }

    // Nothing stands between a program and the clicks of an X11 display.
    bool isAccessibilityTrusted() override { return desktop() != nullptr; }
    bool requestAccessibilityTrust() override { return isAccessibilityTrusted(); }

    void revealInFileViewer(const QString &path) override
    {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
    }

    bool openWithDefaultApplication(const QString &path) override
    {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    }

    bool moveToTrash(const QString &path, QString *error) override
    {
        // Qt places the freedesktop Trash under the user's data folder; when
        // that folder does not exist yet it would put "files/" and "info/"
        // into the working folder instead, so make sure it is there first.
        const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        if (!dataHome.isEmpty() && QDir().mkpath(dataHome) && QFile::moveToTrash(path))
            return true;
        if (error)
            *error = QStringLiteral("Could not move %1 to the Trash.").arg(path);
        return false;
    }

    std::optional<QString> chooseFile(const QString &, const QStringList &) override { return std::nullopt; }

    QList<RecognizedTextLine> recognizeText(const QImage &image) override
    {
        return TesseractTextRecognizer::recognize(image);
    }

private:
    // The display is tried once, when first needed: most commands never ask.
    X11Desktop *desktop()
    {
        if (!m_triedDesktop) {
            m_triedDesktop = true;
            m_desktop = X11Desktop::connect();
        }
        return m_desktop.get();
    }

    void deliver(MouseEventType type, const QPoint &at, const MouseHandler &handler);

    bool m_triedDesktop = false;
    std::unique_ptr<X11Desktop> m_desktop;
    std::unique_ptr<X11ClickMonitor, LaterDeleter> m_monitor;
    MonitorEndHandler m_endHandler;
};

// This process's windows, for the desktop application (the command line has none).
QSet<quint32> ownWindowIds()
{
    QSet<quint32> ids;
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        || QGuiApplication::platformName() != QLatin1String("xcb"))
        return ids;
    for (const QWindow *window : QGuiApplication::topLevelWindows())
        if (window->handle())
            ids.insert(quint32(window->winId()));
    return ids;
}

bool LinuxPlatformServices::startMouseMonitor(MouseHandler handler)
{
    stopMouseMonitor();
    if (!desktop())
        return false;
    m_monitor.reset(X11ClickMonitor::start(
                        [this, handler](MouseEventType type, const QPoint &at) { deliver(type, at, handler); },
                        [this] {
                            stopMouseMonitor();
                            if (m_endHandler)
                                m_endHandler(QStringLiteral("The connection to the X11 display was lost."));
                        })
                        .release());
    return m_monitor != nullptr;
}

// A click on one of this process's windows is not the user's work in
// another application: it is dropped here, as a Mac never reports it.
void LinuxPlatformServices::deliver(MouseEventType type, const QPoint &at, const MouseHandler &handler)
{
    X11Desktop *x = desktop();
    if (!x || !x->isConnected())
        return;
    const QList<X11TopLevel> windows = X11DesktopRules::visibleFrontToBack(x->topLevels());
    if (X11DesktopRules::isOverOwnWindow(at, windows, quint32(::getpid()), ownWindowIds()))
        return;
    handler({type, X11DesktopRules::toBottomLeft(QPointF(at), x->screenSize().height())});
}

std::optional<QString> LinuxPlatformServices::mouseMonitorProblem()
{
    X11Desktop *x = desktop();
    if (!x || !x->isConnected())
        return QString::fromLatin1(noDisplay);
    if (!x->hasXInput2())
        return QStringLiteral("Recording clicks needs the X Input extension 2.2, which this X11 display lacks.");
    return std::nullopt;
}

} // namespace

std::unique_ptr<PlatformServices> makeDesktopPlatformServices()
{
    return std::make_unique<LinuxPlatformServices>();
}
