#pragma once
// The recorded checkpoints with their reference images as thumbnails, in
// flow order. Dragging one to another place reorders the flow (the model
// renumbers the images).

#include "model/ScreenshotProject.h"

#include <QAbstractListModel>

class AppModel;
class ThumbnailLoader;

class CheckpointListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    CheckpointListModel(AppModel &model, ThumbnailLoader &thumbnails, QObject *parent = nullptr);

    void refresh();
    std::optional<ManualScreenDraft> checkpoint(const QModelIndex &index) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDropActions() const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

private:
    struct Row
    {
        ManualScreenDraft checkpoint;
        QString image;
        QStringList navigation; // how the flow reaches it
    };
    QList<Row> rows() const;
    void thumbnailReady(const QString &path);
    std::optional<int> draggedRow(const QMimeData *data) const;

    AppModel &m_model;
    ThumbnailLoader &m_thumbnails;
    QList<Row> m_rows;
};
