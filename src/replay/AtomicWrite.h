#pragma once
// Writing a file so that it is either the old or the new one, never half:
// the bytes go to a hidden temporary file in the same folder, which is then
// renamed over the target. The temporary name is hidden and recognisable, so
// that what a killed process left behind is never listed as a project or an
// image, and the next start can remove it.

#include <QByteArray>
#include <QString>

namespace AtomicWrite {

// Throws std::runtime_error "PATH: REASON" with the file system's reason.
void write(const QString &path, const QByteArray &bytes);

// Whether `fileName` is the temporary name of an unfinished write.
bool isLeftover(const QString &fileName);

} // namespace AtomicWrite
