// The recorder's picture of the device screen, with its pixel size and
// the screen's scale.

#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/UuidText.h"

#include <QDir>
#include <QFile>

void AppModel::refreshRecorderPreview()
{
    const std::optional<QString> device = activeDeviceID();
    if (!device) {
        setLastError(QStringLiteral("Attach to a booted simulator before refreshing preview."));
        return;
    }
    const QString path = QDir::tempPath() + QStringLiteral("/quillmark-preview-") + UuidText::create()
                         + QStringLiteral(".png");
    try {
        ProcessRunner::run(QStringLiteral("xcrun"),
                           {QStringLiteral("simctl"), QStringLiteral("io"), *device, QStringLiteral("screenshot"), path},
                           packageRoot());
        QImage image;
        if (!image.load(path))
            throw AppError(QStringLiteral("Could not load preview screenshot."));
        m_recorderPreviewImage = image;
        m_recorderPreviewPixelSize = QSizeF(image.width(), image.height());
        m_recorderPreviewScale = simulatorDisplayScale(*device);
        m_devicePointSizes.insert(*device, m_recorderPreviewPixelSize / m_recorderPreviewScale);
    } catch (const AppError &error) {
        QFile::remove(path);
        reportError(QStringLiteral("Could not refresh simulator preview: "), error);
        return;
    }
    QFile::remove(path);
    clearLastError();
}
