// vantrel preview: what the attached simulator's screen shows now.

#include "Command.h"

#include "replay/RealNumberText.h"

#include <QFileInfo>

namespace {

int runPreview(CommandContext &c)
{
    const QString out = c.takeOption(QStringLiteral("--out")).value_or(QStringLiteral("simulator-preview.png"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("Usage: vantrel preview [--out FILE]"));
    c.model.refreshRecorderPreview();
    if (c.model.lastError())
        return 1;
    const QString path = QFileInfo(out).absoluteFilePath();
    if (!c.model.recorderPreviewImage() || !c.model.recorderPreviewImage()->save(path, "PNG")) {
        c.model.setLastError(QStringLiteral("Could not save the preview to %1.").arg(path));
        return 1;
    }
    const QSizeF size = c.model.recorderPreviewPixelSize();
    c.out << "Saved " << path << " (" << qRound(size.width()) << " x " << qRound(size.height())
          << " pixels, scale " << RealNumberText::shortest(c.model.recorderPreviewScale()) << ").\n";
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("preview"), QStringLiteral("preview [--out FILE]"),
                 QStringLiteral("Takes a screenshot of the attached simulator and saves it as a PNG\n"
                                "(simulator-preview.png in the current folder unless --out says otherwise),\n"
                                "then prints its pixel size and the screen's scale (pixels per point)."),
                 runPreview, false});
