#include "SimulatorDisplayScale.h"

#include "model/AppModel.h"

#include <QRegularExpression>

double SimulatorDisplayScale::fromEnumerateOutput(const QString &output)
{
    static const QRegularExpression scaleLine(QStringLiteral("Preferred UI Scale:\\s*([0-9.]+)"));
    const QRegularExpressionMatch match = scaleLine.match(output);
    if (!match.hasMatch())
        return 1.0;
    // The whole match, not the group: its last ":"-separated piece.
    const QStringList pieces = match.captured(0).split(QLatin1Char(':'), Qt::SkipEmptyParts);
    bool ok = false;
    const double value = pieces.isEmpty() ? 0 : pieces.last().trimmed().toDouble(&ok);
    return ok && value > 0 ? value : 1.0;
}

double AppModel::simulatorDisplayScale(const QString &device)
{
    const ProcessRunner::Result result = ProcessRunner::run(
        QStringLiteral("xcrun"), {QStringLiteral("simctl"), QStringLiteral("io"), device, QStringLiteral("enumerate")},
        packageRoot());
    return SimulatorDisplayScale::fromEnumerateOutput(result.standardOutput);
}
