#pragma once
// The project library as the sidebar lists it: newest first, each with its
// subtitle, the current project marked.

#include "model/ProjectLibraryItem.h"

#include <QAbstractListModel>

class AppModel;

class ProjectListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { SubtitleRole = Qt::UserRole + 1, IsCurrentRole, IdRole };

    explicit ProjectListModel(const AppModel &model, QObject *parent = nullptr);

    // Re-reads the library from the model.
    void refresh();
    std::optional<ProjectLibraryItem> item(const QModelIndex &index) const;
    // The row of the current project, or -1.
    int currentRow() const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    bool isCurrent(const ProjectLibraryItem &item) const;

    const AppModel &m_model;
    QList<ProjectLibraryItem> m_items;
    QString m_currentID;
};
