#pragma once
// The floating recorder panel, shown while a flow is being recorded. It
// stays on top beside the Simulator window and never takes the keyboard from
// it (a tool window that is shown without activating and refuses focus), so
// the user clicks through the app in the Simulator and saves checkpoints
// here. Only its text field takes the keyboard, while the user types in it.

#include "PanelContext.h"

#include <QTimer>
#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;

class RecorderPanel : public QWidget
{
    Q_OBJECT

public:
    // `save` and `stop` are the application's own actions (Ctrl+S, Ctrl+R).
    RecorderPanel(const PanelContext &context, QAction *save, QAction *stop, QWidget *parent = nullptr);

    // Places the panel beside the Simulator window and shows it without
    // taking the focus; from then on it follows the Simulator window.
    void showBesideSimulator();
    // Moves the panel to where the placement rule wants it now.
    void place();

    QLineEdit *checkpointName() const { return m_name; }
    QLineEdit *typedText() const { return m_text; }
    QLabel *statusLine() const { return m_status; }
    QLabel *pendingLine() const { return m_pending; }
    QLabel *fileNamePreview() const { return m_fileName; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void refresh();
    void sendText();
    void acceptKeyboard(bool accept);

    const PanelContext &m_context;
    QLabel *m_preview = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_pending = nullptr;
    QLabel *m_fileName = nullptr;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_text = nullptr;
    QTimer m_follow;
    qint64 m_previewKey = -1;
};
