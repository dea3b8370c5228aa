#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace TestSupport {

namespace {
std::vector<RegisteredTest> &registry()
{
    static std::vector<RegisteredTest> tests;
    return tests;
}
} // namespace

const std::vector<RegisteredTest> &registeredTests() { return registry(); }

int registerTest(const char *name, const QMetaObject *metaObject, Factory factory)
{
    registry().push_back({name, metaObject, std::move(factory)});
    return static_cast<int>(registry().size());
}

QString vantrelBinary() { return QStringLiteral(VANTREL_CLI_BINARY); }
QString devicesimBinary() { return QStringLiteral(VANTREL_DEVICESIM_BINARY); }
QString appBinary() { return QStringLiteral(VANTREL_APP_BINARY); }

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        QTest::qFail(qPrintable(QStringLiteral("cannot write %1: %2").arg(path, file.errorString())), __FILE__,
                     __LINE__);
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
