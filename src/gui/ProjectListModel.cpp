#include "ProjectListModel.h"

#include "model/AppModel.h"

#include <QBrush>
#include <QColor>
#include <QFont>

ProjectListModel::ProjectListModel(const AppModel &model, QObject *parent) : QAbstractListModel(parent), m_model(model)
{
    refresh();
}

void ProjectListModel::refresh()
{
    const QList<ProjectLibraryItem> &items = m_model.projectLibrary();
    const QString currentID = m_model.project().projectID.value_or(QString());
    if (items == m_items && currentID == m_currentID)
        return;
    bool sameRows = items.size() == m_items.size();
    for (qsizetype i = 0; sameRows && i < items.size(); ++i)
        sameRows = items.at(i).url == m_items.at(i).url;
    if (!sameRows) {
        // Rows came or went: the selection is the view's to restore.
        beginResetModel();
        m_items = items;
        m_currentID = currentID;
        endResetModel();
        return;
    }
    m_items = items;
    m_currentID = currentID;
    if (!m_items.isEmpty())
        emit dataChanged(index(0), index(int(m_items.size()) - 1));
}

std::optional<ProjectLibraryItem> ProjectListModel::item(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_items.size())
        return std::nullopt;
    return m_items.at(index.row());
}

int ProjectListModel::currentRow() const
{
    for (qsizetype i = 0; i < m_items.size(); ++i)
        if (isCurrent(m_items.at(i)))
            return int(i);
    return -1;
}

bool ProjectListModel::isCurrent(const ProjectLibraryItem &item) const
{
    return !m_currentID.isEmpty() && item.id == m_currentID;
}

int ProjectListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

QVariant ProjectListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ProjectLibraryItem &item = m_items.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return item.title + QLatin1Char('\n') + item.subtitle;
    case Qt::ToolTipRole:
        return item.bundleId.isEmpty() ? item.url : item.bundleId + QLatin1Char('\n') + item.url;
    case Qt::FontRole:
        if (isCurrent(item)) {
            QFont font;
            font.setBold(true);
            return font;
        }
        return {};
    case Qt::ForegroundRole:
        if (!item.isReadable)
            return QBrush(QColor(0xb0, 0x20, 0x20));
        return {};
    case Qt::AccessibleTextRole:
        return item.title;
    case SubtitleRole:
        return item.subtitle;
    case IsCurrentRole:
        return isCurrent(item);
    case IdRole:
        return item.id;
    default:
        return {};
    }
}
