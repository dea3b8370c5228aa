#pragma once
// A panel's actions: each runs one model operation, is offered both as a
// button in the panel and as a menu item, and is enabled only when its
// operation makes sense and no other operation is running. They follow the
// model even while their panel is hidden: their menu items and shortcuts
// (Ctrl+R, Ctrl+S) work from every panel and from the recorder panel.

#include "PanelContext.h"

#include <QAction>
#include <QObject>
#include <QPushButton>
#include <functional>

class PanelActions : public QObject
{
    Q_OBJECT

public:
    PanelActions(const PanelContext &context, QObject *parent);

    // `operation` runs as the one action of the moment; `enabledWhen` (if
    // given) is asked again on every refresh. An action that must stay
    // available while another runs (Cancel, Stop) passes `whileBusy`.
    QAction *add(const QString &text, std::function<void()> operation, std::function<bool()> enabledWhen = {},
                 bool whileBusy = false);
    const QList<QAction *> &all() const { return m_actions; }
    // `action`'s text, asked again on every refresh (Start or Stop Recording).
    void setTextWhen(QAction *action, std::function<QString()> text);
    // Re-evaluates which actions are enabled.
    void update();

    // A push button that shows and triggers `action`; `label` (if given)
    // replaces the action's text where room is short, as in the sidebar.
    static QPushButton *button(QAction *action, const QString &label = {});

private:
    struct Rule
    {
        QAction *action;
        std::function<bool()> enabledWhen;
        bool whileBusy;
        std::function<QString()> text;
    };

    const PanelContext &m_context;
    QList<QAction *> m_actions;
    QList<Rule> m_rules;
};
