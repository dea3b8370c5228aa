#include "GeneratePanel.h"

#include "ModelWatcher.h"
#include "RunProgressModel.h"
#include "model/AppModel.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

namespace {

QLabel *wrappingLabel()
{
    auto *label = new QLabel;
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

GeneratePanel::GeneratePanel(const PanelContext &context, QWidget *parent)
    : QWidget(parent),
      m_context(context),
      m_actions(new PanelActions(context, this)),
      m_progressModel(new RunProgressModel(context.model, this))
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(readinessSection());
    layout->addWidget(runSection(), 1);
    context.watcher.watch(this, [this] { refresh(); });
}

QWidget *GeneratePanel::readinessSection()
{
    AppModel &model = m_context.model;
    QAction *check = m_actions->add(QStringLiteral("Check &Readiness Again"), [&model] {
        model.refreshReplayEngineAvailability();
        model.refreshDevices();
    });
    m_preflight = new QListWidget;
    m_preflight->setSelectionMode(QAbstractItemView::NoSelection);
    m_preflight->setFocusPolicy(Qt::NoFocus);
    m_preflight->setAccessibleName(QStringLiteral("Preflight"));
    m_preflight->setMaximumHeight(150);
    m_readiness = wrappingLabel();
    QFont font = m_readiness->font();
    font.setBold(true);
    m_readiness->setFont(font);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_readiness, 1);
    buttons->addWidget(PanelActions::button(check));
    auto *layout = new QVBoxLayout;
    layout->addWidget(m_preflight);
    layout->addLayout(buttons);
    auto *box = new QGroupBox(QStringLiteral("Readiness"));
    box->setLayout(layout);
    return box;
}

QWidget *GeneratePanel::runSection()
{
    AppModel &model = m_context.model;
    m_generate = m_actions->add(
        QStringLiteral("&Generate"), [&model] { model.startRecordedAttachedCapture(); },
        [&model] {
            return !model.isRunning() && !model.runTask().isRunning() && model.canRunRecordedAttachedCapture();
        });
    m_generate->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_G));
    m_cancel = m_actions->add(QStringLiteral("&Cancel Generation"), [&model] { model.cancelRun(); },
                              [&model] { return model.isRunning() || model.runTask().isRunning(); }, true);
    m_cancel->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Period));

    m_grid = new QTableView;
    m_grid->setModel(m_progressModel);
    m_grid->setSelectionMode(QAbstractItemView::NoSelection);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_grid->setMaximumHeight(170);
    m_grid->setAccessibleName(QStringLiteral("Progress"));
    m_total = new QProgressBar;
    m_total->setFormat(QStringLiteral("%v of %m screenshots"));

    m_log = new QPlainTextEdit;
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(5000);
    m_log->setAccessibleName(QStringLiteral("Run log"));
    QFont mono(QStringLiteral("monospace"));
    mono.setStyleHint(QFont::TypeWriter);
    m_log->setFont(mono);

    m_outcomeTitle = wrappingLabel();
    QFont bold = m_outcomeTitle->font();
    bold.setBold(true);
    m_outcomeTitle->setFont(bold);
    m_outcomeDetail = wrappingLabel();

    m_drift = new QFrame;
    static_cast<QFrame *>(m_drift)->setFrameShape(QFrame::StyledPanel);
    m_drift->setStyleSheet(QStringLiteral("QFrame { background: #fff4e5; border: 1px solid #e0a040; border-radius: 4px; }"
                                          "QLabel { border: none; }"));
    m_driftHeading = wrappingLabel();
    m_driftHeading->setFont(bold);
    m_driftText = wrappingLabel();
    QAction *review = m_actions->add(QStringLiteral("Show Screenshots to &Review"), [this] { emit reviewRequested(); });
    auto *driftLayout = new QHBoxLayout(m_drift);
    auto *driftTexts = new QVBoxLayout;
    driftTexts->addWidget(m_driftHeading);
    driftTexts->addWidget(m_driftText);
    driftLayout->addLayout(driftTexts, 1);
    driftLayout->addWidget(PanelActions::button(review));

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(PanelActions::button(m_generate));
    buttons->addWidget(PanelActions::button(m_cancel));
    buttons->addWidget(m_total, 1);
    auto *layout = new QVBoxLayout;
    layout->addLayout(buttons);
    layout->addWidget(m_grid);
    layout->addWidget(m_outcomeTitle);
    layout->addWidget(m_outcomeDetail);
    layout->addWidget(m_drift);
    layout->addWidget(new QLabel(QStringLiteral("Run log:")));
    layout->addWidget(m_log, 1);
    auto *box = new QGroupBox(QStringLiteral("Generation"));
    box->setLayout(layout);
    return box;
}

void GeneratePanel::refresh()
{
    const AppModel &model = m_context.model;
    const QList<ProductPreflightCheck> checks = model.preflightChecks();
    if (m_preflight->count() != checks.size()) {
        m_preflight->clear();
        for (qsizetype i = 0; i < checks.size(); ++i)
            m_preflight->addItem(QString());
    }
    for (qsizetype i = 0; i < checks.size(); ++i) {
        const ProductPreflightCheck &check = checks.at(i);
        QListWidgetItem *item = m_preflight->item(int(i));
        item->setText((check.isReady ? QStringLiteral("\u2713  ") : QStringLiteral("\u2717  ")) + check.title
                      + QStringLiteral(": ") + check.detail);
        item->setForeground(check.isReady ? QColor(0x1a, 0x7f, 0x37) : QColor(0xb0, 0x20, 0x20));
    }
    m_readiness->setText(model.runReadinessMessage());

    m_progressModel->refresh();
    m_total->setMaximum(int(std::max<qint64>(1, model.runTotalCount())));
    m_total->setValue(int(std::min(model.completedRunProgressCount(), model.runTotalCount())));

    const std::optional<RunOutcome> &outcome = model.lastRunOutcome();
    m_outcomeTitle->setText(outcome ? outcome->title : QString());
    m_outcomeDetail->setText(outcome ? outcome->detail : QString());
    m_outcomeTitle->setVisible(outcome.has_value() && !model.isRunning());
    m_outcomeDetail->setVisible(outcome.has_value() && !model.isRunning());
    const std::optional<DriftNotice> drift = model.lastRunDriftNotice();
    m_drift->setVisible(drift.has_value() && !model.isRunning());
    if (drift) {
        m_driftHeading->setText(drift->heading);
        m_driftText->setText(drift->explanation);
    }
    refreshLog();
    m_actions->update();
}

void GeneratePanel::refreshLog()
{
    const RunLogFollower::Update update = m_logShown.take(m_context.model.lastRunLog());
    if (update.text.isEmpty() && !update.replaced)
        return;
    QScrollBar *bar = m_log->verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    if (update.replaced)
        m_log->clear();
    QTextCursor cursor(m_log->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(update.text);
    if (atEnd || update.replaced)
        bar->setValue(bar->maximum());
}
