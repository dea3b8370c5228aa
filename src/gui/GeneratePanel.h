#pragma once
// Generate: whether the project is ready (the preflight list and the
// readiness line), starting and cancelling a run, its progress per language
// and device, the live run log, and how the last run ended.

#include "PanelActions.h"
#include "app/RunLogFollower.h"

#include <QWidget>

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QProgressBar;
class QTableView;
class RunProgressModel;

class GeneratePanel : public QWidget
{
    Q_OBJECT

public:
    explicit GeneratePanel(const PanelContext &context, QWidget *parent = nullptr);

    const QList<QAction *> &actions() const { return m_actions->all(); }
    QAction *generateAction() const { return m_generate; }
    QAction *cancelAction() const { return m_cancel; }
    QListWidget *preflightList() const { return m_preflight; }
    QLabel *readinessLine() const { return m_readiness; }
    QTableView *progressGrid() const { return m_grid; }
    RunProgressModel *progressModel() const { return m_progressModel; }
    QPlainTextEdit *runLog() const { return m_log; }
    QLabel *outcomeTitle() const { return m_outcomeTitle; }
    QLabel *outcomeDetail() const { return m_outcomeDetail; }
    QWidget *driftBox() const { return m_drift; }

signals:
    // The user asked to see the screenshots held back for review.
    void reviewRequested();

private:
    QWidget *readinessSection();
    QWidget *runSection();
    void refresh();
    void refreshLog();

    const PanelContext &m_context;
    PanelActions *m_actions;
    RunProgressModel *m_progressModel;
    QAction *m_generate = nullptr;
    QAction *m_cancel = nullptr;
    QListWidget *m_preflight = nullptr;
    QLabel *m_readiness = nullptr;
    QTableView *m_grid = nullptr;
    QProgressBar *m_total = nullptr;
    QPlainTextEdit *m_log = nullptr;
    QLabel *m_outcomeTitle = nullptr;
    QLabel *m_outcomeDetail = nullptr;
    QWidget *m_drift = nullptr;
    QLabel *m_driftHeading = nullptr;
    QLabel *m_driftText = nullptr;
    RunLogFollower m_logShown;
};
