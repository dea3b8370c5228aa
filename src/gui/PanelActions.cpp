#include "PanelActions.h"

#include "BusyState.h"
#include "model/AppModel.h"

PanelActions::PanelActions(const PanelContext &context, QObject *parent) : QObject(parent), m_context(context)
{
    connect(&m_context.busy, &BusyState::busyChanged, this, &PanelActions::update);
    connect(&m_context.model, &AppModel::changed, this, &PanelActions::update);
}

QAction *PanelActions::add(const QString &text, std::function<void()> operation, std::function<bool()> enabledWhen,
                           bool whileBusy)
{
    auto *action = new QAction(text, parent());
    BusyState *busy = &m_context.busy;
    connect(action, &QAction::triggered, this, [busy, operation, whileBusy] {
        if (whileBusy && busy->isBusy())
            operation(); // Cancel and Stop act on the operation that runs
        else
            busy->run(operation);
    });
    m_actions.append(action);
    // Enabled by the panel's first refresh, once its widgets exist.
    action->setEnabled(false);
    m_rules.append({action, std::move(enabledWhen), whileBusy, {}});
    return action;
}

void PanelActions::setTextWhen(QAction *action, std::function<QString()> text)
{
    for (Rule &rule : m_rules)
        if (rule.action == action)
            rule.text = std::move(text);
}

void PanelActions::update()
{
    const bool busy = m_context.busy.isBusy();
    for (const Rule &rule : std::as_const(m_rules)) {
        const bool allowed = rule.whileBusy || !busy;
        rule.action->setEnabled(allowed && (!rule.enabledWhen || rule.enabledWhen()));
        if (rule.text)
            rule.action->setText(rule.text());
    }
}

QPushButton *PanelActions::button(QAction *action, const QString &label)
{
    const auto text = [action, label] { return label.isEmpty() ? action->text() : label; };
    auto *button = new QPushButton(text());
    button->setEnabled(action->isEnabled());
    button->setToolTip(label.isEmpty() ? action->toolTip() : QString(action->text()).remove(QLatin1Char('&')));
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, [button, action, text] {
        button->setText(text());
        button->setEnabled(action->isEnabled());
        button->setVisible(action->isVisible());
    });
    return button;
}
