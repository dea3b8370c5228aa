// vantrel checkpoints: the recorded checkpoints with their reference images,
// and retaking, moving and deleting them.

#include "Command.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace {

// The navigation recorded before the checkpoint at this (1-based) position.
QList<OperationDraft> operationsBefore(const AppModel &model, qint64 index)
{
    if (index < 1 || index > model.project().screens.size())
        return {};
    return model.project().screens.at(index - 1).operations;
}

QJsonObject checkpointJson(const AppModel &model, const ManualScreenDraft &checkpoint)
{
    QJsonArray operations;
    for (const OperationDraft &operation : operationsBefore(model, checkpoint.index))
        operations.append(operation.identity());
    const QString image = model.manualCaptureURL(checkpoint);
    return QJsonObject{
        {QStringLiteral("index"), checkpoint.index},
        {QStringLiteral("name"), checkpoint.name},
        {QStringLiteral("filename"), QFileInfo(image).fileName()},
        {QStringLiteral("path"), image},
        {QStringLiteral("imageExists"), QFileInfo::exists(image)},
        {QStringLiteral("operations"), operations},
    };
}

void printCheckpoints(CommandContext &c, bool json)
{
    const AppModel &m = c.model;
    const QList<ManualScreenDraft> checkpoints = m.manualScreens();
    if (json) {
        QJsonArray array;
        for (const ManualScreenDraft &checkpoint : checkpoints)
            array.append(checkpointJson(m, checkpoint));
        c.printJson(QJsonObject{
            {QStringLiteral("folder"), m.manualCaptureDirectory()},
            {QStringLiteral("nextIndex"), m.nextManualCaptureIndex()},
            {QStringLiteral("checkpoints"), array},
        });
        return;
    }
    if (checkpoints.isEmpty())
        c.out << "No checkpoints.\n";
    for (const ManualScreenDraft &checkpoint : checkpoints) {
        const QString image = m.manualCaptureURL(checkpoint);
        QStringList operations;
        for (const OperationDraft &operation : operationsBefore(m, checkpoint.index))
            operations.append(operation.identity());
        c.out << QStringLiteral("%1").arg(checkpoint.index, 2) << "  " << QFileInfo(image).fileName()
              << (QFileInfo::exists(image) ? "" : "  (image missing)") << "\n";
        if (!operations.isEmpty())
            c.out << "      after " << operations.join(QStringLiteral(", ")) << "\n";
    }
    c.out << "Folder: " << m.manualCaptureDirectory() << "\n";
}

std::optional<ManualScreenDraft> checkpointNumbered(CommandContext &c, const QString &text)
{
    bool ok = false;
    const qint64 index = text.toLongLong(&ok);
    for (const ManualScreenDraft &checkpoint : c.model.manualScreens())
        if (ok && checkpoint.index == index)
            return checkpoint;
    c.err << "There is no checkpoint " << text << ". Run 'vantrel checkpoints' for the list.\n";
    return std::nullopt;
}

int runCheckpoints(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    // Images found in the folder without records become checkpoints, as at
    // start-up; nothing else of the start-up refresh is needed here.
    c.model.syncManualScreensFromExistingCapturesIfNeeded();
    const QStringList &a = c.arguments;
    const QString action = a.value(0);
    if (action.isEmpty()) {
        printCheckpoints(c, json);
        return 0;
    }
    if (action == QLatin1String("delete-last") && a.size() == 1) {
        c.model.deleteLastManualCapture();
    } else if (action == QLatin1String("retake") && a.size() == 2) {
        const auto checkpoint = checkpointNumbered(c, a.at(1));
        if (!checkpoint)
            return 1;
        c.model.retakeCheckpoint(*checkpoint);
    } else if (action == QLatin1String("delete") && a.size() == 2) {
        const auto checkpoint = checkpointNumbered(c, a.at(1));
        if (!checkpoint)
            return 1;
        c.model.deleteCheckpoint(*checkpoint);
    } else if (action == QLatin1String("move") && a.size() == 3) {
        bool ok = false;
        const qint64 offset = a.at(2).toLongLong(&ok);
        if (!ok)
            return c.usageError(QStringLiteral("OFFSET is a whole number, such as 1 or -1."));
        const auto checkpoint = checkpointNumbered(c, a.at(1));
        if (!checkpoint)
            return 1;
        c.model.moveCheckpoint(*checkpoint, offset);
    } else {
        return c.usageError(QStringLiteral(
            "Usage: vantrel checkpoints [--json] | retake N | move N OFFSET | delete N | delete-last"));
    }
    if (!c.model.lastError())
        printCheckpoints(c, json);
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("checkpoints"),
                 QStringLiteral("checkpoints [--json] | checkpoints retake N | move N OFFSET | delete N | delete-last"),
                 QStringLiteral("Without arguments, lists the recorded checkpoints: number, image file and the\n"
                                "navigation recorded before each.\n"
                                "  retake N         takes checkpoint N's image again; its navigation stays\n"
                                "  move N OFFSET    moves checkpoint N by OFFSET places and renumbers the images\n"
                                "  delete N         moves checkpoint N's image to the Trash and renumbers the rest\n"
                                "  delete-last      moves the newest checkpoint image to the Trash"),
                 runCheckpoints, false});
