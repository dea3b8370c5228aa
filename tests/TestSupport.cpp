#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace TestSupport {

std::vector<std::pair<const char *, Factory>> &registeredTests()
{
    static std::vector<std::pair<const char *, Factory>> tests;
    return tests;
}

int registerTest(const char *name, Factory factory)
{
    registeredTests().emplace_back(name, std::move(factory));
    return static_cast<int>(registeredTests().size());
}

QString vantrelBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/src/cli/vantrel"); }
QString devicesimBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/tools/devicesim/devicesim"); }

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qPrintable(path));
    file.write(bytes);
    return path;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

bool realToolShadowsStandIn(const QStringList &tools)
{
    for (const char *folder : {"/opt/homebrew/bin", "/usr/local/bin", "/usr/bin", "/bin", "/usr/sbin", "/sbin"})
        for (const QString &tool : tools)
            if (QFile::exists(QLatin1String(folder) + QLatin1Char('/') + tool))
                return true;
    return false;
}

} // namespace TestSupport
