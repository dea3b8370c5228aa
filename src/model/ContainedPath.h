#pragma once
// File names read from a project document or found in an output tree are
// used only inside the folder they belong to. A hostile or damaged document
// must never make Vantrel read, move, replace or delete a file elsewhere:
// through "../", an absolute path, a name with a path separator, or a
// symbolic link that leads out of the folder.

#include <QString>
#include <optional>

namespace ContainedPath {

// Why `name` cannot be used as a file in `folder`, or nothing when it can:
// it must be a plain file name (not empty, not "." or "..", no "/" or "\",
// no control characters), and when something of that name exists and is a
// symbolic link, the link must lead to a file inside `folder`.
std::optional<QString> refusal(const QString &folder, const QString &name);

// Whether `path`, with every link followed, lies strictly inside `folder`
// (also with its links followed). A path that does not exist yet counts by
// its nearest existing parent.
bool isInside(const QString &path, const QString &folder);

} // namespace ContainedPath
