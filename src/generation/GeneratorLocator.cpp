// Finding the command-line generator that generation from an .app build
// starts: an explicit choice first, then what ships with the application,
// then a build beside the project, the search path, and last, in a
// development checkout, the generator built beside this application.

#include "model/AppError.h"
#include "model/AppModel.h"
#include "simulator/ProcessRunner.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace {

bool isExecutableFile(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isExecutable();
}

// A variable names an executable; a value that is no file is read as a
// command line, so that a wrapper with its own arguments can be given.
std::optional<AppModel::GeneratorCommand> fromVariable(const char *name)
{
    const QString value = qEnvironmentVariable(name).trimmed();
    if (value.isEmpty())
        return std::nullopt;
    if (QFileInfo(value).isFile())
        return AppModel::GeneratorCommand{value, {}};
    QStringList words = QProcess::splitCommand(value);
    if (words.isEmpty())
        return std::nullopt;
    const QString executable = words.takeFirst();
    return AppModel::GeneratorCommand{executable, words};
}

// Contents/Resources inside a macOS application bundle; the executable's own
// folder anywhere else.
QString resourcesDirectory()
{
    const QDir executableDirectory(QCoreApplication::applicationDirPath());
    const QFileInfo contents(executableDirectory.absoluteFilePath(QStringLiteral("..")));
    if (executableDirectory.dirName() == QLatin1String("MacOS") && contents.fileName() == QLatin1String("Contents"))
        return QDir::cleanPath(executableDirectory.absoluteFilePath(QStringLiteral("../Resources")));
    return executableDirectory.absolutePath();
}

std::optional<QString> onSearchPath(const QString &packageRoot)
{
    try {
        const QString found =
            ProcessRunner::run(QStringLiteral("which"), {QStringLiteral("vantrel")}, packageRoot).standardOutput.trimmed();
        return isExecutableFile(found) ? std::optional(found) : std::nullopt;
    } catch (const AppError &) {
        return std::nullopt; // not on the search path
    }
}

// A development checkout runs the application from its build folder (the
// one holding CMakeCache.txt), where the generator is built too.
std::optional<QString> inOwnBuildFolder()
{
    QDir folder(QCoreApplication::applicationDirPath());
    do {
        if (QFileInfo::exists(folder.filePath(QStringLiteral("CMakeCache.txt")))) {
            const QString candidate = folder.filePath(QStringLiteral("src/cli/vantrel"));
            return isExecutableFile(candidate) ? std::optional(candidate) : std::nullopt;
        }
    } while (folder.cdUp());
    return std::nullopt;
}

} // namespace

QString AppModel::generatorNotFoundMessage()
{
    return QStringLiteral("Could not find `vantrel`. Bundle it with the app, install it in PATH, or set VANTREL_CLI.");
}

std::optional<AppModel::GeneratorCommand> AppModel::findGeneratorCommand(const QString &packageRoot)
{
    for (const char *variable : {"VANTREL_CLI", "QUILLMARK_CLI"})
        if (std::optional<GeneratorCommand> command = fromVariable(variable))
            return command;

    QStringList candidates{resourcesDirectory() + QStringLiteral("/vantrel")};
    for (const char *name : {"vantrel", "quillmark"})
        for (const char *configuration : {"debug", "release"})
            candidates.append(QStringLiteral("%1/.build/%2/%3").arg(packageRoot, QLatin1String(configuration),
                                                                    QLatin1String(name)));
    for (const QString &candidate : candidates)
        if (isExecutableFile(candidate))
            return GeneratorCommand{candidate, {}};

    if (const std::optional<QString> found = onSearchPath(packageRoot))
        return GeneratorCommand{*found, {}};
    if (const std::optional<QString> built = inOwnBuildFolder())
        return GeneratorCommand{*built, {}};
    return std::nullopt;
}
