#include "ModelWatcher.h"

#include "model/AppModel.h"

#include <QEvent>

ModelWatcher::ModelWatcher(AppModel &model, QObject *parent) : QObject(parent)
{
    connect(&model, &AppModel::changed, this, &ModelWatcher::modelChanged);
}

void ModelWatcher::watch(QWidget *widget, std::function<void()> refresh)
{
    widget->installEventFilter(this);
    refresh();
    m_entries.push_back({widget, std::move(refresh), false});
}

void ModelWatcher::modelChanged()
{
    // By index: a refresh may watch another widget meanwhile.
    for (size_t i = 0; i < m_entries.size(); ++i) {
        Entry &entry = m_entries[i];
        if (!entry.widget)
            continue;
        if (entry.widget->isVisible()) {
            entry.stale = false;
            const std::function<void()> refresh = entry.refresh;
            refresh();
        } else {
            entry.stale = true;
        }
    }
}

bool ModelWatcher::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        for (size_t i = 0; i < m_entries.size(); ++i) {
            if (m_entries[i].widget != watched || !m_entries[i].stale)
                continue;
            m_entries[i].stale = false;
            const std::function<void()> refresh = m_entries[i].refresh;
            refresh();
        }
    }
    return QObject::eventFilter(watched, event);
}
