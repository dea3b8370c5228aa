#pragma once
// Shared plumbing for the test executables: one executable per folder runs
// every test class registered in it, and helpers give each test a private
// data root so that no test ever touches the user's real folders.

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <vector>

namespace TestSupport {

using Factory = std::function<QObject *()>;
int registerTest(const char *name, Factory factory);
std::vector<std::pair<const char *, Factory>> &registeredTests();

// Absolute paths of the freshly built programs.
QString vantrelBinary();
QString devicesimBinary();

// Writes a file (creating parent folders) and returns its path.
QString writeFile(const QString &path, const QByteArray &bytes);
QByteArray readFile(const QString &path);

// Whether a real one of `tools` sits in the folders that the product puts
// before the inherited search path (a Mac with Xcode), so that it, not a
// stand-in the test put on PATH, would answer; such tests skip then.
bool realToolShadowsStandIn(const QStringList &tools = {QStringLiteral("xcrun"), QStringLiteral("xcodebuild"),
                                                        QStringLiteral("open")});

} // namespace TestSupport

#define VANTREL_TEST(Class)                                                              \
    static const int vantrelRegistered##Class =                                          \
        TestSupport::registerTest(#Class, [] { return static_cast<QObject *>(new Class); })
