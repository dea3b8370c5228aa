// Writes the runner project below the runner root. Only the four generated
// files are touched: DerivedData (which makes later builds incremental), the
// marker and the last progress file stay as they are.
#include "AtomicWrite.h"
#include "RunnerTemplates.h"
#include "XCUITestReplayInternal.h"

#include <QDir>
#include <filesystem>
#include <stdexcept>

namespace XCUITestReplay {

namespace {

// Throws std::filesystem::filesystem_error with the system's reason.
void createDirectories(const QString &path)
{
    std::filesystem::create_directories(std::filesystem::path(QFile::encodeName(path).toStdString()));
}

void writeText(const QString &path, const QString &text)
{
    writeFileAtomically(path, text.toUtf8());
}

} // namespace

void writeFileAtomically(const QString &path, const QByteArray &bytes)
{
    AtomicWrite::write(path, bytes);
}

void writeRunnerProject(const QString &root, const QString &bundleIdentifier,
                        const QList<XCTestReplayStep> &steps)
{
    const QDir rootDirectory(root);
    const QString hostDirectory = rootDirectory.filePath(QStringLiteral("AutomationHost"));
    const QString testsDirectory = rootDirectory.filePath(QStringLiteral("AutomationUITests"));
    const QString projectDirectory = rootDirectory.filePath(QStringLiteral("AutomationRunner.xcodeproj"));
    const QString schemesDirectory = QDir(projectDirectory).filePath(QStringLiteral("xcshareddata/xcschemes"));
    for (const QString &directory : {hostDirectory, testsDirectory, schemesDirectory})
        createDirectories(directory);

    writeText(QDir(hostDirectory).filePath(QStringLiteral("AutomationHostApp.swift")),
              QString::fromUtf8(RunnerTemplates::hostSource));
    writeText(QDir(testsDirectory).filePath(QStringLiteral("AutomationUITests.swift")),
              uiTestSource(root, bundleIdentifier, steps));
    writeText(QDir(projectDirectory).filePath(QStringLiteral("project.pbxproj")),
              QString::fromUtf8(RunnerTemplates::projectFile));
    writeText(QDir(schemesDirectory).filePath(QStringLiteral("AutomationHost.xcscheme")),
              QString::fromUtf8(RunnerTemplates::scheme));
}

} // namespace XCUITestReplay
