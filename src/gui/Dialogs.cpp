#include "Dialogs.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

bool WidgetDialogs::confirm(QWidget *parent, const QString &title, const QString &question, const QString &action)
{
    QMessageBox box(QMessageBox::Warning, title, question, QMessageBox::Cancel, parent);
    QPushButton *confirmButton = box.addButton(action, QMessageBox::DestructiveRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == confirmButton;
}

std::optional<QString> WidgetDialogs::askText(QWidget *parent, const QString &title, const QString &label,
                                              const QString &text)
{
    bool ok = false;
    const QString answer = QInputDialog::getText(parent, title, label, QLineEdit::Normal, text, &ok);
    if (!ok)
        return std::nullopt;
    return answer;
}

std::optional<QString> WidgetDialogs::chooseAppBuild(QWidget *parent)
{
    // A built app is a folder; Qt's own dialog shows it as one on every
    // desktop (the native one on a Mac would not let a folder be chosen).
    QFileDialog dialog(parent, QStringLiteral("Choose iOS Simulator .app"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilter(QStringLiteral("iOS Simulator apps (*.app)"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().first();
}

std::optional<QString> WidgetDialogs::chooseFolder(QWidget *parent, const QString &title, const QString &start)
{
    const QString folder = QFileDialog::getExistingDirectory(parent, title, start);
    if (folder.isEmpty())
        return std::nullopt;
    return folder;
}
