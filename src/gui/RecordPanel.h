#pragma once
// Record: the live preview of the simulator, starting and stopping a
// recording, what was recorded since the last checkpoint, saving a
// checkpoint, and the checkpoints themselves (rename, retake, delete,
// reorder by dragging, reset).

#include "PanelActions.h"
#include "model/ScreenshotProject.h"

#include <QWidget>

class CheckpointListModel;
class QLabel;
class QLineEdit;
class QListView;

class RecordPanel : public QWidget
{
    Q_OBJECT

public:
    explicit RecordPanel(const PanelContext &context, QWidget *parent = nullptr);

    const QList<QAction *> &actions() const { return m_actions->all(); }
    // Start or stop recording (Ctrl+R).
    QAction *toggleRecordingAction() const { return m_toggle; }
    // Save a checkpoint (Ctrl+S), named by the name field when filled in.
    QAction *saveCheckpointAction() const { return m_save; }
    QLineEdit *checkpointName() const { return m_name; }
    QListView *checkpointList() const { return m_checkpoints; }
    CheckpointListModel *checkpointModel() const { return m_checkpointModel; }
    QLabel *statusLine() const { return m_status; }
    QLabel *pendingLine() const { return m_pending; }
    QLabel *fileNamePreview() const { return m_fileName; }

private:
    QWidget *recordingSection();
    QWidget *checkpointSection();
    void refresh();
    std::optional<ManualScreenDraft> selectedCheckpoint() const;
    void toggleRecording();
    void saveCheckpoint();
    void renameCheckpoint();
    void deleteCheckpoint();
    void resetFlow();

    const PanelContext &m_context;
    PanelActions *m_actions;
    CheckpointListModel *m_checkpointModel;
    QAction *m_toggle = nullptr;
    QAction *m_save = nullptr;
    QLabel *m_preview = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_pending = nullptr;
    QLabel *m_fileName = nullptr;
    QLineEdit *m_name = nullptr;
    QListView *m_checkpoints = nullptr;
    qint64 m_previewKey = -1;
};
