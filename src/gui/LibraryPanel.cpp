#include "LibraryPanel.h"

#include "BusyState.h"
#include "Dialogs.h"
#include "ModelWatcher.h"
#include "ProjectListModel.h"
#include "model/AppModel.h"

#include <QGridLayout>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QVBoxLayout>

namespace {

QLabel *heading(const QString &text)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

} // namespace

LibraryPanel::LibraryPanel(const PanelContext &context, QWidget *parent)
    : QWidget(parent),
      m_context(context),
      m_actions(new PanelActions(context, this)),
      m_projectModel(new ProjectListModel(context.model, this)),
      m_projects(new QListView),
      m_snapshots(new QListWidget)
{
    const AppModel &model = context.model;
    m_new = m_actions->add(QStringLiteral("&New Project…"), [this] { newProject(); });
    m_new->setShortcut(QKeySequence::New);
    QAction *rename = m_actions->add(QStringLiteral("&Rename Project…"), [this] { renameProject(); });
    QAction *remove = m_actions->add(QStringLiteral("&Delete Project…"), [this] { deleteProject(); },
                                     [this] { return m_projectModel->rowCount() > 0; });
    QAction *create = m_actions->add(QStringLiteral("&Create Snapshot"),
                                     [this] { m_context.model.archiveProjectSnapshot(); });
    QAction *restore = m_actions->add(QStringLiteral("Re&store Snapshot"), [this] { restoreSnapshot(); },
                                      [this] { return m_snapshots->currentRow() >= 0; });
    (void)model;

    m_projects->setModel(m_projectModel);
    m_projects->setAccessibleName(QStringLiteral("Projects"));
    m_projects->setUniformItemSizes(true);
    m_projects->setSpacing(2);
    connect(m_projects, &QListView::clicked, this, &LibraryPanel::openClicked);
    m_snapshots->setAccessibleName(QStringLiteral("Snapshots"));
    connect(m_snapshots, &QListWidget::currentRowChanged, m_actions, &PanelActions::update);

    auto *projectButtons = new QGridLayout;
    // The sidebar is narrow: the menu items say "Project", the heading does here.
    projectButtons->addWidget(PanelActions::button(m_new, QStringLiteral("&New\u2026")), 0, 0);
    projectButtons->addWidget(PanelActions::button(rename, QStringLiteral("&Rename\u2026")), 0, 1);
    projectButtons->addWidget(PanelActions::button(remove, QStringLiteral("&Delete\u2026")), 0, 2);
    auto *snapshotButtons = new QGridLayout;
    snapshotButtons->addWidget(PanelActions::button(create), 0, 0);
    snapshotButtons->addWidget(PanelActions::button(restore), 0, 1);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(heading(QStringLiteral("Library")));
    layout->addWidget(m_projects, 3);
    layout->addLayout(projectButtons);
    layout->addWidget(heading(QStringLiteral("Snapshots")));
    layout->addWidget(m_snapshots, 1);
    layout->addLayout(snapshotButtons);

    context.watcher.watch(this, [this] { refresh(); });
}

void LibraryPanel::refresh()
{
    m_projectModel->refresh();
    const int current = m_projectModel->currentRow();
    if (current >= 0 && !m_projects->currentIndex().isValid())
        m_projects->setCurrentIndex(m_projectModel->index(current));

    const QList<ProjectSnapshotSummary> &snapshots = m_context.model.projectSnapshots();
    QStringList texts;
    for (const ProjectSnapshotSummary &snapshot : snapshots)
        texts.append(snapshot.title + QLatin1Char('\n') + snapshot.subtitle);
    QStringList shown;
    for (int i = 0; i < m_snapshots->count(); ++i)
        shown.append(m_snapshots->item(i)->text());
    if (texts != shown) {
        m_snapshots->clear();
        m_snapshots->addItems(texts);
    }
    m_actions->update();
}

void LibraryPanel::openClicked(const QModelIndex &index)
{
    const std::optional<ProjectLibraryItem> item = m_projectModel->item(index);
    if (!item || index.data(ProjectListModel::IsCurrentRole).toBool())
        return;
    m_context.busy.run([this, item] { m_context.model.openProject(*item); });
}

void LibraryPanel::newProject()
{
    const std::optional<QString> name = m_context.dialogs.askText(
        this, QStringLiteral("New Project"),
        QStringLiteral("The current project is archived as a snapshot first.\nName:"), QStringLiteral("Untitled Project"));
    if (name)
        m_context.model.startNewProject(*name);
}

void LibraryPanel::renameProject()
{
    const std::optional<QString> name
        = m_context.dialogs.askText(this, QStringLiteral("Rename Project"), QStringLiteral("Name:"),
                                    AppModel::displayName(m_context.model.project()));
    if (name)
        m_context.model.renameCurrentProject(*name);
}

void LibraryPanel::deleteProject()
{
    // The selected project, or the current one when none is selected.
    std::optional<ProjectLibraryItem> item = m_projectModel->item(m_projects->currentIndex());
    if (!item)
        item = m_projectModel->item(m_projectModel->index(m_projectModel->currentRow()));
    if (!item)
        return;
    const QString question =
        QStringLiteral("Move the project \u201C%1\u201D to the Trash? Its screenshots in Vantrel's output folder "
                       "go with it.")
            .arg(item->title);
    if (m_context.dialogs.confirm(this, QStringLiteral("Delete Project"), question, QStringLiteral("Move to Trash")))
        m_context.model.deleteProject(*item);
}

void LibraryPanel::restoreSnapshot()
{
    const int row = m_snapshots->currentRow();
    const QList<ProjectSnapshotSummary> &snapshots = m_context.model.projectSnapshots();
    if (row < 0 || row >= snapshots.size())
        return;
    m_context.model.restoreProjectSnapshot(ProjectSnapshotSummary(snapshots.at(row)));
}
