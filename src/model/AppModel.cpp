#include "AppModel.h"

#include "ErrorDetails.h"
#include "UuidText.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <QThread>

namespace {

// Copies a folder tree; used once, to carry data over from the old name.
bool copyTree(const QString &from, const QString &to)
{
    if (!QDir().mkpath(to))
        return false;
    const QDir source(from);
    bool ok = true;
    for (const QFileInfo &entry : source.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        const QString target = to + QLatin1Char('/') + entry.fileName();
        ok = (entry.isDir() ? copyTree(entry.filePath(), target) : QFile::copy(entry.filePath(), target)) && ok;
    }
    return ok;
}

// The usual data root: a development checkout (a folder holding
// Package.swift) keeps its data beside the sources; otherwise the user's
// application-data folder, "Vantrel" inside it, migrated once from the
// product's old name "Quillmark".
QString chooseDefaultPackageRoot()
{
    const QString cwd = QDir::currentPath();
    if (QFileInfo::exists(cwd + QStringLiteral("/Package.swift")))
        return cwd;

    // Application Support on a Mac; the user's data folder (such as
    // ~/.local/share) where there is none.
    const QStringList roots = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    if (roots.isEmpty())
        qFatal("No folder for application data is known on this system.");
    const QString base = roots.first();
    const QString newRoot = base + QStringLiteral("/Vantrel");
    const QString oldRoot = base + QStringLiteral("/Quillmark");
    if (!QFileInfo::exists(newRoot) && QFileInfo::exists(oldRoot))
        copyTree(oldRoot, newRoot); // a failed copy is not fatal: we start fresh
    QDir().mkpath(newRoot);
    return newRoot;
}

} // namespace

AppModel::AppModel(std::optional<QString> packageRootOverride,
                   std::unique_ptr<PlatformServices> platform, QObject *parent)
    : QObject(parent),
      m_platform(platform ? std::move(platform) : makeDesktopPlatformServices())
{
    if (packageRootOverride && !packageRootOverride->isEmpty()) {
        m_packageRoot = QDir::cleanPath(QDir(*packageRootOverride).absolutePath());
        QDir().mkpath(m_packageRoot);
    } else {
        m_packageRoot = chooseDefaultPackageRoot();
    }
    m_project.projectID = UuidText::create();
    m_project.outputDirectory = defaultOutputDirectory(m_project.projectID, displayName(m_project));
}

AppModel::~AppModel() = default;

void AppModel::notifyChanged()
{
    assertMainThread();
    if (m_changeQueued)
        return;
    m_changeQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_changeQueued = false;
            emit changed();
        },
        Qt::QueuedConnection);
}

void AppModel::appendLog(const QString &message)
{
    assertMainThread();
    m_runLog += message;
    if (!message.endsWith(QLatin1Char('\n')))
        m_runLog += QLatin1Char('\n');
    notifyChanged();
}

void AppModel::setLastError(const QString &message)
{
    assertMainThread();
    m_lastError = message;
    notifyChanged();
}

void AppModel::reportError(const QString &prefix, const std::exception &error)
{
    const QString details = errorDetails(error);
    if (!details.isEmpty())
        appendLog(prefix + details);
    setLastError(prefix + QString::fromUtf8(error.what()));
}

void AppModel::clearLastError()
{
    assertMainThread();
    m_lastError.reset();
    notifyChanged();
}

void AppModel::assertMainThread() const
{
    Q_ASSERT_X(!QCoreApplication::instance() || QThread::currentThread() == QCoreApplication::instance()->thread(),
               "AppModel", "model state changes only on the main thread");
}
