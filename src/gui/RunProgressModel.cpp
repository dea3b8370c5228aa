#include "RunProgressModel.h"

#include "model/AppModel.h"

#include <QBrush>
#include <QColor>

RunProgressModel::RunProgressModel(const AppModel &model, QObject *parent) : QAbstractTableModel(parent), m_model(model)
{
    refresh();
}

void RunProgressModel::refresh()
{
    QStringList languages;
    QStringList deviceIDs;
    QStringList deviceNames;
    for (const RunProgressCell &cell : m_model.runProgressCells()) {
        if (!languages.contains(cell.language))
            languages.append(cell.language);
        if (!deviceIDs.contains(cell.deviceID)) {
            deviceIDs.append(cell.deviceID);
            deviceNames.append(cell.deviceName);
        }
    }
    if (languages != m_languages || deviceIDs != m_deviceIDs) {
        beginResetModel();
        m_languages = languages;
        m_deviceIDs = deviceIDs;
        m_deviceNames = deviceNames;
        m_progress = m_model.runProgress();
        endResetModel();
        return;
    }
    const bool namesChanged = deviceNames != m_deviceNames;
    m_deviceNames = deviceNames;
    if (namesChanged && !m_deviceIDs.isEmpty())
        emit headerDataChanged(Qt::Horizontal, 0, int(m_deviceIDs.size()) - 1);
    if (m_progress == m_model.runProgress())
        return;
    m_progress = m_model.runProgress();
    if (!m_languages.isEmpty() && !m_deviceIDs.isEmpty())
        emit dataChanged(index(0, 0), index(int(m_languages.size()) - 1, int(m_deviceIDs.size()) - 1));
}

int RunProgressModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_languages.size());
}

int RunProgressModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_deviceIDs.size());
}

std::optional<RunProgress> RunProgressModel::progress(const QModelIndex &index) const
{
    const auto found = m_progress.constFind(RunProgress::key(m_languages.at(index.row()), m_deviceIDs.at(index.column())));
    if (found == m_progress.cend())
        return std::nullopt;
    return *found;
}

QVariant RunProgressModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const std::optional<RunProgress> cell = progress(index);
    switch (role) {
    case Qt::DisplayRole:
        return cell ? RunProgressText::summary(*cell) : QStringLiteral("not run");
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::ForegroundRole:
        if (cell && cell->state == RunProgressState::failed)
            return QBrush(QColor(0xb0, 0x20, 0x20));
        if (cell && cell->state == RunProgressState::done)
            return QBrush(QColor(0x1a, 0x7f, 0x37));
        return {};
    case StateRole:
        return cell ? runProgressStateName(cell->state) : QString();
    case FractionRole:
        return cell && cell->total > 0 ? double(cell->completed) / double(cell->total) : 0.0;
    default:
        return {};
    }
}

QVariant RunProgressModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Horizontal)
        return section >= 0 && section < m_deviceNames.size() ? QVariant(m_deviceNames.at(section)) : QVariant();
    return section >= 0 && section < m_languages.size() ? QVariant(m_languages.at(section)) : QVariant();
}
