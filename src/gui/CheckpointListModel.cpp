#include "CheckpointListModel.h"

#include "ThumbnailLoader.h"
#include "model/AppModel.h"
#include "recorder/OperationDescription.h"

#include <QFileInfo>
#include <QMimeData>

namespace {

const QString rowMimeType = QStringLiteral("application/x-vantrel-checkpoint-row");

bool sameRows(const auto &a, const auto &b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i)
        if (a.at(i).checkpoint.id != b.at(i).checkpoint.id)
            return false;
    return true;
}

} // namespace

CheckpointListModel::CheckpointListModel(AppModel &model, ThumbnailLoader &thumbnails, QObject *parent)
    : QAbstractListModel(parent), m_model(model), m_thumbnails(thumbnails)
{
    connect(&m_thumbnails, &ThumbnailLoader::ready, this, &CheckpointListModel::thumbnailReady);
    refresh();
}

QList<CheckpointListModel::Row> CheckpointListModel::rows() const
{
    QList<Row> result;
    for (const ManualScreenDraft &checkpoint : m_model.manualScreens()) {
        Row row{checkpoint, m_model.manualCaptureURL(checkpoint), {}};
        if (checkpoint.index >= 1 && checkpoint.index <= m_model.project().screens.size())
            for (const OperationDraft &operation : m_model.project().screens.at(checkpoint.index - 1).operations)
                row.navigation.append(OperationDescription::text(operation));
        result.append(row);
    }
    return result;
}

void CheckpointListModel::refresh()
{
    const QList<Row> fresh = rows();
    if (!sameRows(fresh, m_rows)) {
        beginResetModel();
        m_rows = fresh;
        endResetModel();
        return;
    }
    m_rows = fresh;
    if (!m_rows.isEmpty())
        emit dataChanged(index(0), index(int(m_rows.size()) - 1));
}

void CheckpointListModel::thumbnailReady(const QString &path)
{
    for (qsizetype i = 0; i < m_rows.size(); ++i)
        if (m_rows.at(i).image == path)
            emit dataChanged(index(int(i)), index(int(i)), {Qt::DecorationRole});
}

std::optional<ManualScreenDraft> CheckpointListModel::checkpoint(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return std::nullopt;
    return m_rows.at(index.row()).checkpoint;
}

int CheckpointListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant CheckpointListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return QStringLiteral("%1 %2").arg(row.checkpoint.index, 2, 10, QLatin1Char('0')).arg(row.checkpoint.name);
    case Qt::DecorationRole:
        if (const std::optional<QPixmap> thumbnail = m_thumbnails.thumbnail(row.image))
            return *thumbnail;
        return {};
    case Qt::SizeHintRole:
        return m_thumbnails.cellSize();
    case Qt::ToolTipRole: {
        QString tip = QFileInfo(row.image).fileName();
        if (!QFileInfo::exists(row.image))
            tip += QStringLiteral(" (image missing)");
        if (!row.navigation.isEmpty())
            tip += QStringLiteral("\nAfter: ") + row.navigation.join(QStringLiteral("; "));
        return tip;
    }
    default:
        return {};
    }
}

Qt::ItemFlags CheckpointListModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags base = QAbstractListModel::flags(index);
    return index.isValid() ? base | Qt::ItemIsDragEnabled : base | Qt::ItemIsDropEnabled;
}

Qt::DropActions CheckpointListModel::supportedDropActions() const { return Qt::MoveAction; }

QStringList CheckpointListModel::mimeTypes() const { return {rowMimeType}; }

QMimeData *CheckpointListModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.size() != 1 || !indexes.first().isValid())
        return nullptr;
    auto *data = new QMimeData;
    data->setData(rowMimeType, QByteArray::number(indexes.first().row()));
    return data;
}

std::optional<int> CheckpointListModel::draggedRow(const QMimeData *data) const
{
    if (!data || !data->hasFormat(rowMimeType))
        return std::nullopt;
    bool ok = false;
    const int row = data->data(rowMimeType).toInt(&ok);
    if (!ok || row < 0 || row >= m_rows.size())
        return std::nullopt;
    return row;
}

bool CheckpointListModel::canDropMimeData(const QMimeData *data, Qt::DropAction action, int, int,
                                          const QModelIndex &) const
{
    return action == Qt::MoveAction && draggedRow(data).has_value();
}

bool CheckpointListModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int,
                                       const QModelIndex &parent)
{
    const std::optional<int> from = draggedRow(data);
    if (action != Qt::MoveAction || !from)
        return false;
    // Dropped on an item: before it; in the empty space below: at the end.
    int to = row >= 0 ? row : (parent.isValid() ? parent.row() : int(m_rows.size()));
    if (to > *from)
        --to; // the dragged row leaves its place first
    const ManualScreenDraft dragged = m_rows.at(*from).checkpoint;
    if (to != *from) {
        // After the view has finished its drop: the move rewrites the rows.
        QMetaObject::invokeMethod(
            this, [this, dragged, offset = to - *from] { m_model.moveCheckpoint(dragged, offset); },
            Qt::QueuedConnection);
    }
    // The model moves the row itself; the view must not remove the source.
    return false;
}
