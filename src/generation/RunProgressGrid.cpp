#include "RunProgressGrid.h"

#include "model/AppModel.h"

namespace RunProgressText {

QString count(qint64 completed, qint64 total) { return QStringLiteral("%1/%2").arg(completed).arg(total); }

QString summary(const RunProgress &progress)
{
    return count(progress.completed, progress.total) + QLatin1Char(' ') + runProgressStateName(progress.state);
}

} // namespace RunProgressText

QList<RunProgressCell> AppModel::runProgressCells() const
{
    QList<RunProgressCell> cells;
    for (const QString &device : m_project.devices) {
        const QString name = displayNameForDeviceID(device);
        for (const QString &language : m_project.languages)
            cells.append({device, name, language});
    }
    return cells;
}
