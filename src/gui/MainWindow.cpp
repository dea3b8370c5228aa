#include "MainWindow.h"

#include "GeneratePanel.h"
#include "LibraryPanel.h"
#include "RecordPanel.h"
#include "RecorderPanel.h"
#include "ReviewPanel.h"
#include "SetupPanel.h"
#include "model/AppModel.h"
#include "model/Await.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

// Screenshot thumbnails: a phone screen at a size where its text is legible.
const QSize thumbnailSize(108, 234);

const char *panelNames[] = {"Setup", "Record", "Generate", "Review"};

// Keeps two name fields showing the same text.
void mirror(QLineEdit *a, QLineEdit *b)
{
    QObject::connect(a, &QLineEdit::textChanged, b, [b](const QString &text) {
        if (b->text() != text)
            b->setText(text);
    });
    QObject::connect(b, &QLineEdit::textChanged, a, [a](const QString &text) {
        if (a->text() != text)
            a->setText(text);
    });
}

} // namespace

MainWindow::MainWindow(AppModel &model, Dialogs &dialogs, QWidget *parent)
    : QMainWindow(parent),
      m_model(model),
      m_watcher(model),
      m_thumbnails(thumbnailSize),
      m_context{model, m_watcher, m_busy, dialogs, m_thumbnails}
{
    m_setup = new SetupPanel(m_context);
    m_record = new RecordPanel(m_context);
    m_generate = new GeneratePanel(m_context);
    m_review = new ReviewPanel(m_context);
    m_stack = new QStackedWidget;
    for (QWidget *panel : std::initializer_list<QWidget *>{m_setup, m_record, m_generate, m_review})
        m_stack->addWidget(panel);
    connect(m_generate, &GeneratePanel::reviewRequested, this, [this] {
        showPanel(reviewPanel);
        m_review->showNeedsReview();
    });

    auto *split = new QSplitter;
    split->addWidget(makeSidebar());
    split->addWidget(m_stack);
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);

    auto *central = new QWidget;
    auto *layout = new QVBoxLayout(central);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(makeBanner());
    layout->addWidget(split, 1);
    setCentralWidget(central);

    m_recorder = new RecorderPanel(m_context, m_record->saveCheckpointAction(), m_record->toggleRecordingAction(), this);
    mirror(m_record->checkpointName(), m_recorder->checkpointName());

    makeMenus();
    resize(1180, 820);
    m_watcher.watch(this, [this] { refresh(); });
    showPanel(setupPanel);
}

MainWindow::~MainWindow() = default;

QWidget *MainWindow::makeBanner()
{
    m_banner = new QFrame;
    m_banner->setObjectName(QStringLiteral("errorBanner"));
    m_banner->setStyleSheet(QStringLiteral("#errorBanner { background: #fdecea; border: 1px solid #e57373; "
                                           "border-radius: 4px; } QLabel { color: #8a1c1c; }"));
    m_bannerText = new QLabel;
    m_bannerText->setWordWrap(true);
    m_bannerText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *dismiss = new QPushButton(QStringLiteral("Dismiss"));
    connect(dismiss, &QPushButton::clicked, this, [this] { m_model.clearLastError(); });
    auto *layout = new QHBoxLayout(m_banner);
    layout->addWidget(m_bannerText, 1);
    layout->addWidget(dismiss);
    m_banner->setVisible(false);
    return m_banner;
}

QWidget *MainWindow::makeSidebar()
{
    m_navigation = new QListWidget;
    for (const char *name : panelNames)
        m_navigation->addItem(QString::fromLatin1(name));
    m_navigation->setAccessibleName(QStringLiteral("Panels"));
    m_navigation->setFixedHeight(m_navigation->sizeHintForRow(0) * 4 + 2 * m_navigation->frameWidth() + 4);
    connect(m_navigation, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);

    m_library = new LibraryPanel(m_context);
    auto *sidebar = new QWidget;
    auto *layout = new QVBoxLayout(sidebar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_navigation);
    layout->addWidget(m_library, 1);
    sidebar->setMinimumWidth(240);
    sidebar->setMaximumWidth(340);
    return sidebar;
}

void MainWindow::makeMenus()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addActions(m_library->actions());
    file->addSeparator();
    QAction *quit = file->addAction(QStringLiteral("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setShortcutContext(Qt::ApplicationShortcut);
    quit->setMenuRole(QAction::QuitRole);

    menuBar()->addMenu(QStringLiteral("&Setup"))->addActions(m_setup->actions());
    menuBar()->addMenu(QStringLiteral("&Record"))->addActions(m_record->actions());
    menuBar()->addMenu(QStringLiteral("&Generate"))->addActions(m_generate->actions());
    menuBar()->addMenu(QStringLiteral("Re&view"))->addActions(m_review->actions());

    QMenu *view = menuBar()->addMenu(QStringLiteral("&Window"));
    for (int panel = setupPanel; panel <= reviewPanel; ++panel) {
        QAction *show = view->addAction(QString::fromLatin1(panelNames[panel]) + QStringLiteral(" Panel"), this,
                                        [this, panel] { showPanel(Panel(panel)); });
        show->setShortcut(QKeySequence(Qt::CTRL | (Qt::Key_1 + panel)));
    }
}

void MainWindow::showPanel(Panel panel)
{
    m_navigation->setCurrentRow(panel);
}

MainWindow::Panel MainWindow::currentPanel() const
{
    return Panel(m_stack->currentIndex());
}

void MainWindow::refresh()
{
    setWindowTitle(QStringLiteral("Vantrel \u2014 ") + AppModel::displayName(m_model.project()));
    m_banner->setVisible(m_model.lastError().has_value());
    m_bannerText->setText(m_model.lastError().value_or(QString()));
    if (m_model.isRecordingFlow() && !m_recorder->isVisible())
        m_recorder->showBesideSimulator();
    else if (!m_model.isRecordingFlow() && m_recorder->isVisible())
        m_recorder->hide();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // A run still going would leave its build behind: it is cancelled, and
    // the window waits until the worker has ended its processes.
    if (m_model.isRunning() || m_model.runTask().isRunning()) {
        const QFuture<void> run = m_model.runTask();
        m_model.cancelRun();
        awaitFuture(run);
    }
    if (m_model.isRecordingFlow())
        m_model.stopFlowRecording();
    m_recorder->hide();
    event->accept();
}
