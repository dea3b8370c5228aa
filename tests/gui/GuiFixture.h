#pragma once
// The desktop application's window over a model on a private data root, with
// scripted desktop services and dialogs that tests answer instead of a person.

#include "Dialogs.h"
#include "MainWindow.h"
#include "ModelFixture.h"

#include <QTest>

class ScriptedDialogs : public Dialogs
{
public:
    bool confirmAnswer = true;
    std::optional<QString> textAnswer;
    std::optional<QString> appBuildAnswer;
    std::optional<QString> folderAnswer;
    QStringList asked; // every question, in order

    bool confirm(QWidget *, const QString &, const QString &question, const QString &) override
    {
        asked.append(question);
        return confirmAnswer;
    }
    std::optional<QString> askText(QWidget *, const QString &title, const QString &, const QString &) override
    {
        asked.append(title);
        return textAnswer;
    }
    std::optional<QString> chooseAppBuild(QWidget *) override { return appBuildAnswer; }
    std::optional<QString> chooseFolder(QWidget *, const QString &, const QString &) override { return folderAnswer; }
};

struct GuiFixture : ModelFixture
{
    ScriptedDialogs dialogs;
    std::unique_ptr<MainWindow> window;

    GuiFixture()
    {
        model->loadSavedProject();
        window = std::make_unique<MainWindow>(*model, dialogs);
        window->show();
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get()))
            qWarning("the window did not become active");
    }

    ~GuiFixture() { window.reset(); }
};

namespace GuiTest {

// Lets the model's announced change reach the views (it is posted to the
// next turn of the event loop, and a view's refresh may post another).
inline void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

using ::writeImage;

// A recorded checkpoint with its reference image, as recording leaves it.
inline void addCheckpoint(AppModel &model, const QString &name, QList<OperationDraft> operations = {})
{
    const qint64 index = model.project().screens.size() + 1;
    const QString file = AppModel::checkpointFileName(index, name);
    writeImage(model.manualCaptureDirectory() + QLatin1Char('/') + file, QColor::fromHsv(int(index) * 70 % 360, 120, 220));
    ScreenDraft screen;
    screen.id = QStringLiteral("SCREEN-%1").arg(index);
    screen.name = name;
    screen.operations = std::move(operations);
    arrange(model).project.screens.append(screen);
    model.upsertManualScreen(index, name, file);
    arrange(model).project.manualCaptureIndex = index + 1;
    model.saveProject();
}

// The action whose menu text, without its mnemonic and ellipsis, is `text`.
inline QAction *action(const QList<QAction *> &actions, const QString &text)
{
    for (QAction *candidate : actions) {
        QString plain = candidate->text();
        plain.remove(QLatin1Char('&')).remove(QStringLiteral("\u2026"));
        if (plain == text)
            return candidate;
    }
    qFatal("no action %s", qPrintable(text));
}

} // namespace GuiTest
