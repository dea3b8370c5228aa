// The Linux desktop: no Simulator windows and no global mouse monitor exist
// here, so those report nothing; files go to the freedesktop Trash and open
// with the desktop's default application.

#include "platform/PlatformServices.h"
#include "platform/TesseractTextRecognizer.h"

#include <QDesktopServices>
#include <QDir>
#include <QStandardPaths>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace {

class LinuxPlatformServices : public PlatformServices
{
public:
    QList<RawWindowInfo> onScreenWindows() override { return {}; }
    std::optional<QRectF> mainScreenFrame() override { return std::nullopt; }
    std::optional<QRectF> mainScreenVisibleFrame() override { return std::nullopt; }
    bool startMouseMonitor(MouseHandler) override { return false; }
    void stopMouseMonitor() override {}
    bool isAccessibilityTrusted() override { return false; }
    bool requestAccessibilityTrust() override { return false; }

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

    QList<RecognizedTextLine> recognizeText(const QImage &image) override;
};

QList<RecognizedTextLine> LinuxPlatformServices::recognizeText(const QImage &image)
{
    return TesseractTextRecognizer::recognize(image);
}

} // namespace

std::unique_ptr<PlatformServices> makeDesktopPlatformServices()
{
    return std::make_unique<LinuxPlatformServices>();
}
