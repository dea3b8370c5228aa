#pragma once
// Platform services driven by tests: they set the facts a desktop would
// report and read back the requests the model made.

#include "platform/PlatformServices.h"

class ScriptedPlatformServices : public PlatformServices
{
public:
    QList<RawWindowInfo> windows;
    std::optional<QRectF> screenFrame = QRectF(0, 0, 1440, 900);
    std::optional<QRectF> visibleFrame = QRectF(0, 0, 1440, 875);
    bool accessibilityTrusted = true;
    int accessibilityRequests = 0; // how often the permission prompt was asked for
    bool canInstallMonitor = true;
    std::optional<QString> monitorProblem; // why no monitor can be installed
    bool trashAvailable = true;
    std::optional<QString> chosenFile;
    QList<RecognizedTextLine> recognizedLines;

    // Requests, in the order they were made.
    QStringList revealed;
    QStringList opened;
    QStringList trashed;
    MouseHandler mouseHandler;
    MonitorEndHandler monitorEndHandler;

    // Sends a synthetic event to the installed monitor, if any.
    void sendMouse(MouseEventType type, QPointF location)
    {
        if (mouseHandler)
            mouseHandler({type, location});
    }

    QList<RawWindowInfo> onScreenWindows() override { return windows; }
    std::optional<QRectF> mainScreenFrame() override { return screenFrame; }
    std::optional<QRectF> mainScreenVisibleFrame() override { return visibleFrame; }
    // Ends the installed monitor as a desktop that went away would.
    void endMonitor(const QString &reason)
    {
        mouseHandler = nullptr;
        if (monitorEndHandler)
            monitorEndHandler(reason);
    }

    bool startMouseMonitor(MouseHandler handler) override;
    void stopMouseMonitor() override { mouseHandler = nullptr; }
    std::optional<QString> mouseMonitorProblem() override { return monitorProblem; }
    void setMouseMonitorEndHandler(MonitorEndHandler handler) override { monitorEndHandler = std::move(handler); }
    bool isAccessibilityTrusted() override { return accessibilityTrusted; }
    bool requestAccessibilityTrust() override
    {
        ++accessibilityRequests;
        return accessibilityTrusted;
    }
    void revealInFileViewer(const QString &path) override { revealed.append(path); }
    bool openWithDefaultApplication(const QString &path) override
    {
        opened.append(path);
        return true;
    }
    bool moveToTrash(const QString &path, QString *error) override;
    std::optional<QString> chooseFile(const QString &, const QStringList &) override { return chosenFile; }
    QList<RecognizedTextLine> recognizeText(const QImage &) override { return recognizedLines; }
};
