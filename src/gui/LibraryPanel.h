#pragma once
// The sidebar's library: the local projects, newest first, the current one
// marked (a click opens another), and the archived snapshots.

#include "PanelActions.h"

#include <QWidget>

class ProjectListModel;
class QListView;
class QListWidget;

class LibraryPanel : public QWidget
{
    Q_OBJECT

public:
    explicit LibraryPanel(const PanelContext &context, QWidget *parent = nullptr);

    QAction *newProjectAction() const { return m_new; }
    const QList<QAction *> &actions() const { return m_actions->all(); }
    QListView *projectList() const { return m_projects; }
    QListWidget *snapshotList() const { return m_snapshots; }
    ProjectListModel *projectModel() const { return m_projectModel; }

private:
    void refresh();
    void openClicked(const QModelIndex &index);
    void newProject();
    void renameProject();
    void deleteProject();
    void restoreSnapshot();

    const PanelContext &m_context;
    PanelActions *m_actions;
    ProjectListModel *m_projectModel;
    QListView *m_projects;
    QListWidget *m_snapshots;
    QAction *m_new = nullptr;
};
