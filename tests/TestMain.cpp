// Runs every test class registered in this executable, in registration order,
// and passes command-line arguments (such as a single test function) through.
#include "TestSupport.h"

#ifdef VANTREL_TEST_WIDGETS
#include <QApplication>
using TestApplication = QApplication; // the widget tests need one
#else
#include <QGuiApplication>
using TestApplication = QGuiApplication;
#endif
#include <QTemporaryDir>
#include <QTest>
#include <memory>

int main(int argc, char **argv)
{
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
    int failures = 0;
    for (auto &[name, factory] : TestSupport::registeredTests()) {
        std::unique_ptr<QObject> test(factory());
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
