#pragma once
// Making the folders the workspace and the output tree need.

#include <QString>

namespace Folder {
// Creates `path` with every missing parent; an existing folder is fine.
// Throws AppError "Could not create the folder PATH: REASON" with the file
// system's own reason (permission denied, no space left, a file in the way).
void ensure(const QString &path);
}
