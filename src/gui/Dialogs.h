#pragma once
// The questions the application asks the user in a dialog of its own. The
// windows ask through this interface so that tests can answer instead of a
// person; the application answers with Qt's standard dialogs.

#include <QString>
#include <optional>

class QWidget;

class Dialogs
{
public:
    virtual ~Dialogs() = default;

    // A destructive action, confirmed by pressing `action` ("Delete").
    virtual bool confirm(QWidget *parent, const QString &title, const QString &question, const QString &action) = 0;
    // A line of text, such as a new name; nothing when cancelled.
    virtual std::optional<QString> askText(QWidget *parent, const QString &title, const QString &label,
                                           const QString &text) = 0;
    // A built iOS Simulator app (a folder whose name ends in .app).
    virtual std::optional<QString> chooseAppBuild(QWidget *parent) = 0;
    virtual std::optional<QString> chooseFolder(QWidget *parent, const QString &title, const QString &start) = 0;
};

// Qt's standard dialogs.
class WidgetDialogs : public Dialogs
{
public:
    bool confirm(QWidget *parent, const QString &title, const QString &question, const QString &action) override;
    std::optional<QString> askText(QWidget *parent, const QString &title, const QString &label,
                                   const QString &text) override;
    std::optional<QString> chooseAppBuild(QWidget *parent) override;
    std::optional<QString> chooseFolder(QWidget *parent, const QString &title, const QString &start) override;
};
