#pragma once
// Shared plumbing for the test executables: one executable per folder holds
// the test classes registered in it (CTest runs each function on its own, see
// TestMain.cpp), and helpers give each test a private data root so that no
// test ever touches the user's real folders.

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <vector>

namespace TestSupport {

using Factory = std::function<QObject *()>;
struct RegisteredTest
{
    const char *name;
    const QMetaObject *metaObject; // lists the functions without making the object
    Factory factory;
};
int registerTest(const char *name, const QMetaObject *metaObject, Factory factory);
const std::vector<RegisteredTest> &registeredTests();

// Absolute paths of the freshly built programs, as CMake passed them.
QString vantrelBinary();
QString devicesimBinary();
QString appBinary(); // vantrel-app, the desktop application

// Writes a file (creating parent folders) and returns its path; a failure
// fails the running test with the reason.
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
        TestSupport::registerTest(#Class, &Class::staticMetaObject,                       \
                                  [] { return static_cast<QObject *>(new Class); })
