// The customer guide ships as a resource: inside the bundle on a Mac,
// installed to share/vantrel elsewhere, and copied beside the binaries of
// a build so that development builds find it too. Every place is found
// from the running executable, so an installed tree still works when moved.

#include "CustomerGuide.h"

#include "model/AppModel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace CustomerGuide {

QStringList searchFolders(const QString &executableDir)
{
    const QDir dir(executableDir);
    QStringList folders{
        dir.absoluteFilePath(QStringLiteral("../Resources")),      // Vantrel.app/Contents/MacOS
        dir.absoluteFilePath(QStringLiteral("../share/vantrel")),  // prefix/bin
        dir.absolutePath(),                                        // a build tree
    };
    for (QString &folder : folders)
        folder = QDir::cleanPath(folder);
    folders.removeDuplicates();
    return folders;
}

std::optional<QString> find(const QStringList &folders)
{
    for (const QString &folder : folders) {
        const QFileInfo guide(folder + QLatin1Char('/') + fileName);
        if (guide.isFile())
            return guide.absoluteFilePath();
    }
    return std::nullopt;
}

std::optional<QString> locate()
{
    const QString executableDir = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    return find(searchFolders(executableDir.isEmpty() ? QDir::currentPath() : executableDir));
}

} // namespace CustomerGuide

std::optional<QString> AppModel::locateCustomerGuide()
{
    const std::optional<QString> guide = CustomerGuide::locate();
    if (!guide)
        setLastError(QStringLiteral("Customer guide is missing from this build."));
    return guide;
}

void AppModel::openCustomerGuide()
{
    if (const std::optional<QString> guide = locateCustomerGuide())
        platform().openWithDefaultApplication(*guide);
}
