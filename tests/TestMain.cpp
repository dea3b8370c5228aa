// The main of every test executable. CTest runs one test function per
// process ("Class::function"), so any test can be run alone by name and no
// test depends on what another one left behind:
//
//   tst_model --list-tests          every Class::function, one per line
//   tst_model WorkspaceTest::loads  that function (Qt Test options may follow)
//   tst_model WorkspaceTest         that class
//   tst_model                       everything in the executable
#include "TestSupport.h"

#ifdef VANTREL_TEST_WIDGETS
#include <QApplication>
using TestApplication = QApplication; // the widget tests need one
#else
#include <QGuiApplication>
using TestApplication = QGuiApplication;
#endif
#include <QMetaMethod>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

bool isTestFunction(const QMetaMethod &method)
{
    static const QByteArrayList fixtures{"initTestCase", "cleanupTestCase", "init", "cleanup"};
    const QByteArray name = method.name();
    return method.methodType() == QMetaMethod::Slot && method.access() == QMetaMethod::Private
        && method.parameterCount() == 0 && !fixtures.contains(name) && !name.endsWith("_data");
}

void listTests()
{
    for (const TestSupport::RegisteredTest &test : TestSupport::registeredTests())
        for (int i = test.metaObject->methodOffset(); i < test.metaObject->methodCount(); ++i)
            if (const QMetaMethod method = test.metaObject->method(i); isTestFunction(method))
                std::printf("%s::%s\n", test.name, method.name().constData());
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--list-tests") == 0) {
        listTests();
        return 0;
    }

    // "Class::function" or "Class" as the first argument picks what runs;
    // Qt Test sees the function name and any options after it.
    QByteArray onlyClass;
    QByteArray onlyFunction;
    if (argc > 1 && argv[1][0] != '-') {
        const QByteArray selector(argv[1]);
        const qsizetype separator = selector.indexOf("::");
        onlyClass = separator < 0 ? selector : selector.left(separator);
        if (separator >= 0)
            onlyFunction = selector.mid(separator + 2);
    }

    // A private home for the whole run: whatever a test or a program it
    // starts might write under the user's folders lands here instead.
    QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", (home.path() + "/.local/share").toUtf8());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/.config").toUtf8());
    qputenv("XDG_CACHE_HOME", (home.path() + "/.cache").toUtf8());

    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen"
                                                                     : qgetenv("QT_QPA_PLATFORM"));
    TestApplication app(argc, argv);

    QList<QByteArray> arguments{QByteArray(argv[0])};
    if (!onlyFunction.isEmpty())
        arguments.append(onlyFunction);
    for (int i = onlyClass.isEmpty() ? 1 : 2; i < argc; ++i)
        arguments.append(argv[i]);
    QList<char *> qtArguments;
    for (QByteArray &argument : arguments)
        qtArguments.append(argument.data());

    int failures = 0;
    bool found = onlyClass.isEmpty();
    for (const TestSupport::RegisteredTest &test : TestSupport::registeredTests()) {
        if (!onlyClass.isEmpty() && onlyClass != test.name)
            continue;
        found = true;
        std::unique_ptr<QObject> object(test.factory());
        failures += QTest::qExec(object.get(), int(qtArguments.size()), qtArguments.data());
    }
    if (!found) {
        std::fprintf(stderr, "No test class %s here; --list-tests lists them.\n", onlyClass.constData());
        return 1;
    }
    return failures == 0 ? 0 : 1;
}
