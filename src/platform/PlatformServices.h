#pragma once
// Everything the desktop provides, behind one small interface. The adapters
// only fetch facts or carry out one request; every rule that uses them
// (which window is the Simulator, coordinate conversion, panel placement,
// tap or swipe, scoring recognised text) is core code with tests.
//
// Implementations: macos/ (the real desktop), linux/ (an X11 desktop when
// there is a display), scripted/ (tests set the facts and read back the
// requests).

#include <QImage>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

// One on-screen window as the window server lists it, front to back.
// Bounds have their origin at the top left of the main screen.
struct RawWindowInfo
{
    QString ownerName;
    int layer = 0;
    std::optional<QRectF> bounds; // absent when the server's bounds cannot be read
};

// One line of recognised text; the box is normalised to 0...1 with its
// origin at the bottom left of the image.
struct RecognizedTextLine
{
    QString text;
    QRectF boundingBox;
};

enum class MouseEventType { leftMouseDown, leftMouseUp };

// A left-button event anywhere on the desktop, in desktop coordinates with
// the origin at the bottom left of the main screen, y growing upwards.
struct DesktopMouseEvent
{
    MouseEventType type = MouseEventType::leftMouseDown;
    QPointF location;
};

class PlatformServices
{
public:
    virtual ~PlatformServices() = default;

    // Window server and screens.
    virtual QList<RawWindowInfo> onScreenWindows() = 0;
    virtual std::optional<QRectF> mainScreenFrame() = 0;
    virtual std::optional<QRectF> mainScreenVisibleFrame() = 0;

    // Desktop-wide left-button monitor. Each event carries the pointer
    // location read when the desktop delivered it; the handler is called on
    // the main thread, never after stopMouseMonitor(). Returns false when no
    // monitor can be installed.
    using MouseHandler = std::function<void(const DesktopMouseEvent &)>;
    virtual bool startMouseMonitor(MouseHandler handler) = 0;
    virtual void stopMouseMonitor() = 0;
    // Why no monitor can be installed on this desktop (no display to
    // observe, say), as a sentence for the user; nothing when one can.
    virtual std::optional<QString> mouseMonitorProblem() { return std::nullopt; }
    // Called on the main thread when an installed monitor ends without
    // stopMouseMonitor() (the desktop's connection went away), with a
    // sentence that says so; no event follows. Desktops whose monitor
    // cannot end that way never call it.
    using MonitorEndHandler = std::function<void(const QString &reason)>;
    virtual void setMouseMonitorEndHandler(MonitorEndHandler handler) { (void)handler; }
    // Whether this process may observe clicks in other applications. The
    // plain query never disturbs the user (readiness asks it on every read);
    // the request also asks the desktop to show its permission prompt.
    virtual bool isAccessibilityTrusted() = 0;
    virtual bool requestAccessibilityTrust() = 0;

    // Files.
    virtual void revealInFileViewer(const QString &path) = 0;
    virtual bool openWithDefaultApplication(const QString &path) = 0;
    // Moves a file or folder to the Trash; false (with a reason) when that
    // is not possible here.
    virtual bool moveToTrash(const QString &path, QString *error) = 0;
    // An open panel for one file or folder whose name ends in one of
    // `extensions` ("app"); nothing when the user cancels.
    virtual std::optional<QString> chooseFile(const QString &title, const QStringList &extensions) = 0;

    // Text recognition; may be slow, callers run it off the main thread.
    virtual QList<RecognizedTextLine> recognizeText(const QImage &image) = 0;
};

// The implementation for this desktop (macOS or Linux).
std::unique_ptr<PlatformServices> makeDesktopPlatformServices();
