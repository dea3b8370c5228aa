#include "RecordPanel.h"

#include "CheckpointListModel.h"
#include "Dialogs.h"
#include "ModelWatcher.h"
#include "RecordingStatus.h"
#include "ThumbnailLoader.h"
#include "model/AppModel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QVBoxLayout>

namespace {

constexpr int previewHeight = 440;

} // namespace

RecordPanel::RecordPanel(const PanelContext &context, QWidget *parent)
    : QWidget(parent),
      m_context(context),
      m_actions(new PanelActions(context, this)),
      m_checkpointModel(new CheckpointListModel(context.model, context.thumbnails, this))
{
    m_preview = new QLabel;
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setMinimumSize(previewHeight / 2 + 8, previewHeight + 8);
    m_preview->setFrameShape(QFrame::StyledPanel);
    m_preview->setAccessibleName(QStringLiteral("Simulator preview"));

    auto *top = new QHBoxLayout;
    top->addWidget(m_preview);
    top->addWidget(recordingSection(), 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(checkpointSection(), 1);

    context.watcher.watch(this, [this] { refresh(); });
}

QWidget *RecordPanel::recordingSection()
{
    AppModel &model = m_context.model;
    m_toggle = m_actions->add(QStringLiteral("Start &Recording"), [this] { toggleRecording(); });
    m_toggle->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    m_toggle->setShortcutContext(Qt::ApplicationShortcut);
    m_actions->setTextWhen(m_toggle, [&model] {
        return model.isRecordingFlow() ? QStringLiteral("Stop &Recording") : QStringLiteral("Start &Recording");
    });
    m_save = m_actions->add(QStringLiteral("&Save Checkpoint"), [this] { saveCheckpoint(); },
                            [&model] { return model.attachedDeviceID().has_value(); });
    m_save->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    m_save->setShortcutContext(Qt::ApplicationShortcut);
    QAction *preview = m_actions->add(QStringLiteral("Refresh &Preview"), [&model] { model.refreshRecorderPreview(); },
                                      [&model] { return model.attachedDeviceID().has_value(); });

    m_status = new QLabel;
    m_status->setWordWrap(true);
    m_pending = new QLabel;
    m_pending->setWordWrap(true);
    m_pending->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_name = new QLineEdit;
    m_name->setPlaceholderText(QStringLiteral("Named from the screen's text"));
    m_name->setAccessibleName(QStringLiteral("Checkpoint name"));
    connect(m_name, &QLineEdit::textChanged, this, &RecordPanel::refresh);
    connect(m_name, &QLineEdit::returnPressed, m_save, &QAction::trigger);
    m_fileName = new QLabel;

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Status:"), m_status);
    form->addRow(QStringLiteral("Since the last checkpoint:"), m_pending);
    form->addRow(QStringLiteral("Checkpoint name:"), m_name);
    form->addRow(QStringLiteral("File:"), m_fileName);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(PanelActions::button(m_toggle));
    buttons->addWidget(PanelActions::button(m_save));
    buttons->addWidget(PanelActions::button(preview));
    buttons->addStretch();
    auto *layout = new QVBoxLayout;
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addStretch();
    auto *box = new QGroupBox(QStringLiteral("Recording"));
    box->setLayout(layout);
    return box;
}

QWidget *RecordPanel::checkpointSection()
{
    AppModel &model = m_context.model;
    const auto hasSelection = [this] { return selectedCheckpoint().has_value(); };
    QAction *rename = m_actions->add(QStringLiteral("Re&name Checkpoint…"), [this] { renameCheckpoint(); }, hasSelection);
    QAction *retake = m_actions->add(QStringLiteral("Re&take Checkpoint"), [this] {
        if (const std::optional<ManualScreenDraft> checkpoint = selectedCheckpoint())
            m_context.model.retakeCheckpoint(*checkpoint);
    }, hasSelection);
    QAction *remove = m_actions->add(QStringLiteral("&Delete Checkpoint…"), [this] { deleteCheckpoint(); }, hasSelection);
    QAction *earlier = m_actions->add(QStringLiteral("Move Checkpoint &Earlier"), [this] {
        if (const std::optional<ManualScreenDraft> checkpoint = selectedCheckpoint())
            m_context.model.moveCheckpoint(*checkpoint, -1);
    }, hasSelection);
    QAction *later = m_actions->add(QStringLiteral("Move Checkpoint &Later"), [this] {
        if (const std::optional<ManualScreenDraft> checkpoint = selectedCheckpoint())
            m_context.model.moveCheckpoint(*checkpoint, 1);
    }, hasSelection);
    QAction *reset = m_actions->add(QStringLiteral("Reset Recorded &Flow…"), [this] { resetFlow(); },
                                    [&model] { return model.canResetRecordedFlow(); });

    m_checkpoints = new QListView;
    m_checkpoints->setModel(m_checkpointModel);
    m_checkpoints->setViewMode(QListView::IconMode);
    m_checkpoints->setFlow(QListView::LeftToRight);
    m_checkpoints->setWrapping(true);
    m_checkpoints->setResizeMode(QListView::Adjust);
    m_checkpoints->setMovement(QListView::Snap);
    m_checkpoints->setIconSize(m_context.thumbnails.size());
    m_checkpoints->setGridSize(m_context.thumbnails.cellSize());
    m_checkpoints->setUniformItemSizes(true);
    m_checkpoints->setDragDropMode(QAbstractItemView::InternalMove);
    m_checkpoints->setDefaultDropAction(Qt::MoveAction);
    m_checkpoints->setSelectionMode(QAbstractItemView::SingleSelection);
    m_checkpoints->setAccessibleName(QStringLiteral("Checkpoints"));
    connect(m_checkpoints->selectionModel(), &QItemSelectionModel::currentChanged, m_actions, &PanelActions::update);
    connect(m_checkpointModel, &QAbstractItemModel::modelReset, m_actions, &PanelActions::update);

    auto *buttons = new QHBoxLayout;
    // Short labels under the "Checkpoints" heading; the menu says it in full.
    buttons->addWidget(PanelActions::button(rename, QStringLiteral("Re&name\u2026")));
    buttons->addWidget(PanelActions::button(retake, QStringLiteral("Re&take")));
    buttons->addWidget(PanelActions::button(remove, QStringLiteral("&Delete\u2026")));
    buttons->addWidget(PanelActions::button(earlier, QStringLiteral("Move &Earlier")));
    buttons->addWidget(PanelActions::button(later, QStringLiteral("Move &Later")));
    buttons->addStretch();
    buttons->addWidget(PanelActions::button(reset, QStringLiteral("Reset &Flow\u2026")));
    auto *layout = new QVBoxLayout;
    layout->addWidget(new QLabel(QStringLiteral("Drag a checkpoint to change the order of the flow.")));
    layout->addWidget(m_checkpoints, 1);
    layout->addLayout(buttons);
    auto *box = new QGroupBox(QStringLiteral("Checkpoints"));
    box->setLayout(layout);
    return box;
}

void RecordPanel::refresh()
{
    showRecordingStatus(m_context.model, {m_preview, m_status, m_pending, m_fileName}, m_name->text(), previewHeight,
                        m_previewKey, QStringLiteral("No preview yet.\nAttach a simulator."));
    m_checkpointModel->refresh();
    m_actions->update();
}

std::optional<ManualScreenDraft> RecordPanel::selectedCheckpoint() const
{
    return m_checkpointModel->checkpoint(m_checkpoints->currentIndex());
}

void RecordPanel::toggleRecording()
{
    if (m_context.model.isRecordingFlow())
        m_context.model.stopFlowRecording();
    else
        m_context.model.startFlowRecording();
}

void RecordPanel::saveCheckpoint()
{
    m_context.model.captureManualScreenshot(m_name->text());
    if (!m_context.model.lastError())
        m_name->clear();
}

void RecordPanel::renameCheckpoint()
{
    const std::optional<ManualScreenDraft> checkpoint = selectedCheckpoint();
    if (!checkpoint)
        return;
    if (const std::optional<QString> name = m_context.dialogs.askText(this, QStringLiteral("Rename Checkpoint"),
                                                                       QStringLiteral("Name:"), checkpoint->name))
        m_context.model.renameCheckpoint(*checkpoint, *name);
}

void RecordPanel::deleteCheckpoint()
{
    const std::optional<ManualScreenDraft> checkpoint = selectedCheckpoint();
    if (!checkpoint)
        return;
    const QString question =
        QStringLiteral("Delete checkpoint %1 \u201C%2\u201D? Its image goes to the Trash and the checkpoints after it "
                       "are renumbered.")
            .arg(checkpoint->index)
            .arg(checkpoint->name);
    if (m_context.dialogs.confirm(this, QStringLiteral("Delete Checkpoint"), question, QStringLiteral("Delete")))
        m_context.model.deleteCheckpoint(*checkpoint);
}

void RecordPanel::resetFlow()
{
    if (m_context.dialogs.confirm(this, QStringLiteral("Reset Recorded Flow"),
                                  QStringLiteral("Delete every checkpoint, its image and what was recorded since the "
                                                 "last one?"),
                                  QStringLiteral("Reset")))
        m_context.model.resetRecordedFlow();
}
