#include "Folder.h"

#include "AppError.h"

#include <QFile>
#include <filesystem>
#include <system_error>

namespace Folder {

void ensure(const QString &path)
{
    // QDir::mkpath only says that it failed; the user needs to know why.
    std::error_code error;
    const std::filesystem::path folder(QFile::encodeName(path).toStdString());
    std::filesystem::create_directories(folder, error);
    if (!error && std::filesystem::is_directory(folder, error))
        return;
    const QString reason = error ? QString::fromLocal8Bit(error.message().c_str())
                                 : QStringLiteral("a file of that name is in the way");
    throw AppError(QStringLiteral("Could not create the folder %1: %2").arg(path, reason));
}

} // namespace Folder
