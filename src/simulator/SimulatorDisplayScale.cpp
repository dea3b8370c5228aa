#include "SimulatorDisplayScale.h"

#include "model/AppError.h"
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

std::optional<QSizeF> SimulatorDisplayScale::pointSizeFromEnumerateOutput(const QString &output)
{
    // The first display port listed is the device's own screen.
    static const QRegularExpression widthLine(QStringLiteral("Default width:\\s*([0-9]+)"));
    static const QRegularExpression heightLine(QStringLiteral("Default height:\\s*([0-9]+)"));
    const QRegularExpressionMatch width = widthLine.match(output);
    const QRegularExpressionMatch height = heightLine.match(output);
    if (!width.hasMatch() || !height.hasMatch())
        return std::nullopt;
    const double scale = fromEnumerateOutput(output);
    return QSizeF(width.captured(1).toDouble() / scale, height.captured(1).toDouble() / scale);
}

double AppModel::simulatorDisplayScale(const QString &device)
{
    const ProcessRunner::Result result = ProcessRunner::run(
        QStringLiteral("xcrun"), {QStringLiteral("simctl"), QStringLiteral("io"), device, QStringLiteral("enumerate")},
        packageRoot());
    return SimulatorDisplayScale::fromEnumerateOutput(result.standardOutput);
}

void AppModel::refreshDevicePointSize(const QString &device)
{
    try {
        const ProcessRunner::Result result = runProcessOffMain(
            QStringLiteral("xcrun"), {QStringLiteral("simctl"), QStringLiteral("io"), device, QStringLiteral("enumerate")});
        if (const std::optional<QSizeF> size = SimulatorDisplayScale::pointSizeFromEnumerateOutput(result.standardOutput))
            m_devicePointSizes.insert(device, *size);
    } catch (const AppError &) {
        // A device that is shut down tells nothing; its size stays unknown
        // until it runs.
    }
}
