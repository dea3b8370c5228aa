#pragma once
// Where this build keeps the customer guide "CUSTOMER_READY.md".

#include <QString>
#include <QStringList>
#include <optional>

namespace CustomerGuide {

inline const QString fileName = QStringLiteral("CUSTOMER_READY.md");

// Folders that may hold the guide, most specific first, for a program in
// `executableDir`: the app bundle's resources, an installed share folder,
// the program's own folder (a build tree), then the source tree.
QStringList searchFolders(const QString &executableDir);

// The first folder of `folders` that holds the guide, as the guide's path.
std::optional<QString> find(const QStringList &folders);

// The guide for the running program.
std::optional<QString> locate();

} // namespace CustomerGuide
