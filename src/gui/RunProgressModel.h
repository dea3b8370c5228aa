#pragma once
// The progress grid of a run: one row per language, one column per device,
// each cell "completed/total state", in the order every front shows them.

#include "generation/RunProgressGrid.h"

#include <QAbstractTableModel>
#include <QStringList>

class AppModel;

class RunProgressModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role { StateRole = Qt::UserRole + 1, FractionRole };

    explicit RunProgressModel(const AppModel &model, QObject *parent = nullptr);

    void refresh();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::optional<RunProgress> progress(const QModelIndex &index) const;

    const AppModel &m_model;
    QStringList m_languages;
    QStringList m_deviceIDs;
    QStringList m_deviceNames;
    QHash<QString, RunProgress> m_progress;
};
