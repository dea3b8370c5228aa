#pragma once
// Turns the model's `changed()` into refreshes of the panels that show it.
// A visible panel re-reads at once; a hidden one only when it is shown
// again, so that a change never costs the work of panels nobody sees.

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <vector>

class AppModel;

class ModelWatcher : public QObject
{
    Q_OBJECT

public:
    explicit ModelWatcher(AppModel &model, QObject *parent = nullptr);

    // Calls `refresh` now and after every change while `widget` is visible.
    void watch(QWidget *widget, std::function<void()> refresh);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Entry
    {
        QPointer<QWidget> widget;
        std::function<void()> refresh;
        bool stale = false;
    };

    void modelChanged();

    std::vector<Entry> m_entries;
};
