// generation-timing-shim: linked as xcrun, xcodebuild and open in front of
// the device stand-in during the overhead measurement. It runs the tool of
// its own name from $VANTREL_BENCH_REAL_TOOLS, passes its output on, and
// appends "NAME SECONDS" to $VANTREL_BENCH_TOOL_LOG. Qt Core only, so that
// its own start costs little.

#include "replay/ChildProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

int main(int argc, char **argv)
{
    const QString name = QFileInfo(QString::fromLocal8Bit(argv[0])).fileName();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const QString tool = qEnvironmentVariable("VANTREL_BENCH_REAL_TOOLS") + QLatin1Char('/') + name;

    QElapsedTimer timer;
    timer.start();
    int status = 127;
    try {
        ChildProcess child(tool, arguments, QDir::currentPath(), ChildProcess::currentEnvironment());
        child.waitForExit(-1);
        const ChildProcess::Output &output = child.output();
        std::fwrite(output.standardOutput.constData(), 1, size_t(output.standardOutput.size()), stdout);
        std::fwrite(output.standardError.constData(), 1, size_t(output.standardError.size()), stderr);
        status = output.exitStatus;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "generation-timing-shim: %s\n", error.what());
    }
    const QByteArray line = name.toUtf8() + ' ' + QByteArray::number(double(timer.nsecsElapsed()) / 1e9, 'f', 6) + '\n';
    const int fd = ::open(qgetenv("VANTREL_BENCH_TOOL_LOG").constData(), O_WRONLY | O_APPEND | O_CREAT, 0644);
    if (fd >= 0) {
        [[maybe_unused]] const ssize_t written = ::write(fd, line.constData(), size_t(line.size()));
        ::close(fd);
    }
    return status;
}
