#include "RecorderPanel.h"

#include "BusyState.h"
#include "ModelWatcher.h"
#include "PanelActions.h"
#include "RecordingStatus.h"
#include "model/AppModel.h"
#include "simulator/RecorderPanelPlacement.h"

#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWindow>

namespace {

// How often the panel looks where the Simulator window went.
constexpr int followMilliseconds = 400;
constexpr int floatingPreviewHeight = 360;

QLabel *statusLabel()
{
    auto *label = new QLabel;
    label->setWordWrap(true);
    return label;
}

} // namespace

RecorderPanel::RecorderPanel(const PanelContext &context, QAction *save, QAction *stop, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus), m_context(context)
{
    setWindowTitle(QStringLiteral("Recorder"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFixedSize(int(RecorderPanelPlacement::panelWidth), int(RecorderPanelPlacement::panelHeight));

    m_preview = new QLabel;
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setMinimumHeight(floatingPreviewHeight);
    m_status = statusLabel();
    m_pending = statusLabel();
    m_fileName = statusLabel();
    m_name = new QLineEdit;
    m_name->setPlaceholderText(QStringLiteral("Named from the screen's text"));
    m_text = new QLineEdit;
    m_text->setPlaceholderText(QStringLiteral("Text to type into the app"));
    m_text->installEventFilter(this);
    m_name->installEventFilter(this);
    connect(m_text, &QLineEdit::returnPressed, this, &RecorderPanel::sendText);
    connect(m_name, &QLineEdit::returnPressed, save, &QAction::trigger);
    connect(m_name, &QLineEdit::textChanged, this, &RecorderPanel::refresh);

    auto *typeButton = new QPushButton(QStringLiteral("Type"));
    connect(typeButton, &QPushButton::clicked, this, &RecorderPanel::sendText);
    auto *typing = new QHBoxLayout;
    typing->addWidget(m_text, 1);
    typing->addWidget(typeButton);

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Since the last checkpoint:"), m_pending);
    form->addRow(QStringLiteral("Checkpoint name:"), m_name);
    form->addRow(QStringLiteral("File:"), m_fileName);
    form->addRow(QStringLiteral("Type text:"), typing);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(PanelActions::button(save), 1);
    buttons->addWidget(PanelActions::button(stop), 1);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_preview);
    layout->addWidget(m_status);
    layout->addLayout(form);
    layout->addStretch();
    layout->addLayout(buttons);

    m_follow.setInterval(followMilliseconds);
    connect(&m_follow, &QTimer::timeout, this, &RecorderPanel::place);
    context.watcher.watch(this, [this] { refresh(); });
}

void RecorderPanel::showBesideSimulator()
{
    place();
    show();
    m_follow.start();
}

void RecorderPanel::place()
{
    const QRect target = RecorderPanelPlacement::geometry(m_context.model.platform());
    if (pos() != target.topLeft())
        move(target.topLeft());
}

void RecorderPanel::hideEvent(QHideEvent *event)
{
    m_follow.stop();
    acceptKeyboard(false);
    QWidget::hideEvent(event);
}

void RecorderPanel::refresh()
{
    showRecordingStatus(m_context.model, {m_preview, m_status, m_pending, m_fileName}, m_name->text(),
                        floatingPreviewHeight, m_previewKey, QString());
}

void RecorderPanel::sendText()
{
    const QString text = m_text->text();
    if (text.trimmed().isEmpty())
        return;
    if (m_context.busy.run([this, text] { m_context.model.addRecordedType(text); }) && !m_context.model.lastError())
        m_text->clear();
    acceptKeyboard(false);
}

bool RecorderPanel::eventFilter(QObject *watched, QEvent *event)
{
    // A click into a text field lends the panel the keyboard until the text
    // is sent or the field is left; the rest of the time the Simulator keeps it.
    if (event->type() == QEvent::MouseButtonPress && (watched == m_text || watched == m_name)) {
        acceptKeyboard(true);
        static_cast<QWidget *>(watched)->setFocus(Qt::MouseFocusReason);
    } else if (event->type() == QEvent::FocusOut && (watched == m_text || watched == m_name)) {
        if (!m_text->hasFocus() && !m_name->hasFocus())
            acceptKeyboard(false);
    }
    return QWidget::eventFilter(watched, event);
}

void RecorderPanel::acceptKeyboard(bool accept)
{
    QWindow *window = windowHandle();
    if (!window || window->flags().testFlag(Qt::WindowDoesNotAcceptFocus) == !accept)
        return;
    // The native window's flag changes in place: no re-creation, no flicker.
    window->setFlag(Qt::WindowDoesNotAcceptFocus, !accept);
    if (accept)
        activateWindow();
}
