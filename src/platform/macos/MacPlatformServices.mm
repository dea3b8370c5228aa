// The macOS desktop: the window server's window list, the main screen,
// the desktop-wide left-button monitor and accessibility trust, Finder and
// Launch Services for files, the open panel, and Vision for text.
//
// Adapters only: they fetch facts and carry out requests; every rule that
// uses them lives in the core.

#include "platform/PlatformServices.h"
#include "platform/TesseractTextRecognizer.h"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <CoreGraphics/CoreGraphics.h>
#import <Vision/Vision.h>

#include <QMetaObject>
#include <QCoreApplication>

namespace {

QString toQString(NSString *text) { return text ? QString::fromNSString(text) : QString(); }

QRectF toQRect(NSRect rect) { return QRectF(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height); }

class MacPlatformServices : public PlatformServices
{
public:
    ~MacPlatformServices() override { stopMouseMonitor(); }

    QList<RawWindowInfo> onScreenWindows() override
    {
        QList<RawWindowInfo> result;
        CFArrayRef list = CGWindowListCopyWindowInfo(
            kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements, kCGNullWindowID);
        if (!list)
            return result;
        NSArray *windows = CFBridgingRelease(list);
        for (NSDictionary *window in windows) {
            RawWindowInfo info;
            info.ownerName = toQString(window[(__bridge NSString *)kCGWindowOwnerName]);
            info.layer = [window[(__bridge NSString *)kCGWindowLayer] intValue];
            NSDictionary *boundsDictionary = window[(__bridge NSString *)kCGWindowBounds];
            CGRect bounds;
            if (boundsDictionary
                && CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)boundsDictionary, &bounds))
                info.bounds = QRectF(bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height);
            result.append(info);
        }
        return result;
    }

    std::optional<QRectF> mainScreenFrame() override
    {
        // The window server measures window bounds from the top of the
        // primary display (the one with the menu bar, first in the list), so
        // that screen's height turns them into desktop coordinates, whichever
        // screen holds the focus.
        NSScreen *screen = NSScreen.screens.firstObject;
        return screen ? std::optional(toQRect(screen.frame)) : std::nullopt;
    }

    std::optional<QRectF> mainScreenVisibleFrame() override
    {
        NSScreen *screen = [NSScreen mainScreen];
        return screen ? std::optional(toQRect(screen.visibleFrame)) : std::nullopt;
    }

    bool startMouseMonitor(MouseHandler handler) override
    {
        stopMouseMonitor();
        auto shared = std::make_shared<MouseHandler>(std::move(handler));
        // The block and the calls it queues hold the handler weakly: m_handler
        // is its only owner, so an event queued before stopMouseMonitor() is
        // dropped instead of reaching a recorder that has stopped.
        std::weak_ptr<MouseHandler> weak = shared;
        // A global monitor sees only events delivered to other applications,
        // so clicks in our own windows are never recorded.
        m_monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:(NSEventMaskLeftMouseDown | NSEventMaskLeftMouseUp)
                                                           handler:^(NSEvent *event) {
            DesktopMouseEvent desktopEvent;
            desktopEvent.type = event.type == NSEventTypeLeftMouseDown ? MouseEventType::leftMouseDown
                                                                       : MouseEventType::leftMouseUp;
            // The pointer in desktop points (origin bottom left), not the
            // event's own window-relative location.
            const NSPoint point = [NSEvent mouseLocation];
            desktopEvent.location = QPointF(point.x, point.y);
            QMetaObject::invokeMethod(QCoreApplication::instance(), [weak, desktopEvent] {
                if (auto h = weak.lock(); h && *h)
                    (*h)(desktopEvent);
            }, Qt::QueuedConnection);
        }];
        m_handler = shared;
        return m_monitor != nil;
    }

    void stopMouseMonitor() override
    {
        if (m_monitor) {
            [NSEvent removeMonitor:m_monitor];
            m_monitor = nil;
        }
        m_handler.reset();
    }

    bool isAccessibilityTrusted() override { return AXIsProcessTrusted(); }

    bool requestAccessibilityTrust() override
    {
        NSDictionary *options = @{(__bridge NSString *)kAXTrustedCheckOptionPrompt: @YES};
        return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
    }

    void revealInFileViewer(const QString &path) override
    {
        NSURL *url = [NSURL fileURLWithPath:path.toNSString()];
        [[NSWorkspace sharedWorkspace] activateFileViewerSelectingURLs:@[url]];
    }

    bool openWithDefaultApplication(const QString &path) override
    {
        return [[NSWorkspace sharedWorkspace] openURL:[NSURL fileURLWithPath:path.toNSString()]];
    }

    bool moveToTrash(const QString &path, QString *error) override
    {
        NSError *nsError = nil;
        const BOOL moved = [[NSFileManager defaultManager] trashItemAtURL:[NSURL fileURLWithPath:path.toNSString()]
                                                         resultingItemURL:nil
                                                                    error:&nsError];
        if (!moved && error)
            *error = toQString(nsError.localizedDescription);
        return moved;
    }

    std::optional<QString> chooseFile(const QString &title, const QStringList &extensions) override
    {
        NSOpenPanel *panel = [NSOpenPanel openPanel];
        panel.title = title.toNSString();
        panel.message = title.toNSString(); // open panels no longer show their title
        // A bundle such as an .app counts as a file while packages are not
        // browsed into, so plain folders stay unselectable.
        panel.canChooseFiles = YES;
        panel.canChooseDirectories = NO;
        panel.allowsMultipleSelection = NO;
        panel.treatsFilePackagesAsDirectories = NO;
        NSMutableArray<NSString *> *types = [NSMutableArray array];
        for (const QString &extension : extensions)
            [types addObject:extension.toNSString()];
        // allowedContentTypes would need UTType (another framework); the
        // extension list says the same and works on every supported system.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
        if (types.count > 0)
            panel.allowedFileTypes = types;
#pragma clang diagnostic pop
        if ([panel runModal] != NSModalResponseOK || panel.URL == nil)
            return std::nullopt;
        return toQString(panel.URL.path);
    }

    QList<RecognizedTextLine> recognizeText(const QImage &image) override
    {
        // Called on a worker thread, which has no autorelease pool of its own.
        @autoreleasepool {
            if (std::optional<QList<RecognizedTextLine>> lines = recognizeWithVision(image))
                return *lines;
        }
        return TesseractTextRecognizer::recognize(image);
    }

private:
    // Nothing when Vision cannot read the image at all.
    static std::optional<QList<RecognizedTextLine>> recognizeWithVision(const QImage &image)
    {
        QList<RecognizedTextLine> lines;
        // toCGImage takes only 32-bit formats; a palette or grey PNG is converted first.
        CGImageRef cgImage = image.convertToFormat(QImage::Format_ARGB32_Premultiplied).toCGImage();
        if (!cgImage)
            return std::nullopt;
        VNRecognizeTextRequest *request = [[VNRecognizeTextRequest alloc] init];
        request.recognitionLevel = VNRequestTextRecognitionLevelAccurate;
        request.usesLanguageCorrection = YES;
        request.minimumTextHeight = 0.012f;
        VNImageRequestHandler *handler = [[VNImageRequestHandler alloc] initWithCGImage:cgImage options:@{}];
        NSError *error = nil;
        const BOOL ok = [handler performRequests:@[request] error:&error];
        CGImageRelease(cgImage);
        if (!ok)
            return std::nullopt;
        for (VNRecognizedTextObservation *observation in request.results) {
            VNRecognizedText *best = [observation topCandidates:1].firstObject;
            if (!best)
                continue;
            const CGRect box = observation.boundingBox; // normalised, origin bottom left
            lines.append({toQString(best.string), QRectF(box.origin.x, box.origin.y, box.size.width, box.size.height)});
        }
        return lines;
    }

    id m_monitor = nil;
    std::shared_ptr<MouseHandler> m_handler;
};

} // namespace

std::unique_ptr<PlatformServices> makeDesktopPlatformServices()
{
    return std::make_unique<MacPlatformServices>();
}
