#include "BenchSupport.h"

#include <QProcess>

#include "replay/ChildProcess.h"

#include <stdexcept>

namespace BenchSupport {

bool runTool(const QString &command, const QStringList &arguments, const QString &workingDirectory,
             const QHash<QString, QString> &extraEnvironment, QByteArray *standardOutput)
{
    QHash<QString, QString> environment = ChildProcess::currentEnvironment();
    for (auto it = extraEnvironment.begin(); it != extraEnvironment.end(); ++it)
        environment.insert(it.key(), it.value());
    try {
        ChildProcess child(command, arguments, workingDirectory, environment);
        child.waitForExit(-1);
        if (standardOutput)
            *standardOutput = child.output().standardOutput;
        return child.output().exitedNormally && child.output().exitStatus == 0;
    } catch (const std::runtime_error &) {
        return false;
    }
}

QString devicesimBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/tools/devicesim/devicesim"); }
QString vantrelBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/src/cli/vantrel"); }
QString timingShimBinary() { return QStringLiteral(VANTREL_BINARY_DIR "/tools/bench/generation-timing-shim"); }

bool vantrel(const QString &root, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(vantrelBinary(), QStringList{QStringLiteral("--root"), root} + arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(300000);
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace BenchSupport
