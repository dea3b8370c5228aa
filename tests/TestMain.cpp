// Runs every test class registered in this executable, in registration order,
// and passes command-line arguments (such as a single test function) through.
#include "TestSupport.h"

#include <QGuiApplication>
#include <QTest>
#include <memory>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen"
                                                                     : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    int failures = 0;
    for (auto &[name, factory] : TestSupport::registeredTests()) {
        std::unique_ptr<QObject> test(factory());
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
