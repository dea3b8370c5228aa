#pragma once
// One step of the "Start Here" panel, as data: the desktop application draws
// it and calls `action` when its button is pressed.

#include <QString>
#include <functional>
#include <optional>

struct QuickStartRow
{
    int number = 0;
    QString title;
    QString detail;
    bool isComplete = false;
    std::optional<QString> buttonTitle; // no button when absent
    QString systemImage;                // a symbol name
    std::function<void()> action;       // empty when the front decides what the button does

    static QString heading() { return QStringLiteral("Start Here"); }
    static QString subtitle()
    {
        return QStringLiteral("Open the app, allow recording, attach Simulator, then record and generate.");
    }
};
