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
    // An existing folder is no error; a file in its place is one.
    std::filesystem::create_directories(folder, error);
    if (error)
        throw AppError(QStringLiteral("Could not create the folder %1: %2")
                           .arg(path, QString::fromLocal8Bit(error.message().c_str())));
}

} // namespace Folder
