#pragma once
// What both recording views show, the Record panel and the floating
// Recorder panel: the recorder's status line, what was recorded since the
// last checkpoint, the file name the next checkpoint gets, and the live
// preview, scaled only when a new picture arrived.

#include "model/AppModel.h"

#include <QLabel>
#include <QPixmap>

struct RecordingStatusLabels
{
    QLabel *preview = nullptr;
    QLabel *status = nullptr;
    QLabel *pending = nullptr;
    QLabel *fileName = nullptr;
};

// `previewKey` remembers the picture shown last; `noPreview` is shown when
// there is none (empty: the label is cleared).
inline void showRecordingStatus(const AppModel &model, const RecordingStatusLabels &labels,
                                const QString &checkpointName, int previewHeight, qint64 &previewKey,
                                const QString &noPreview)
{
    labels.status->setText(model.simulatorEventRecordingStatus());
    const QStringList pending = model.pendingOperationDescriptions();
    labels.pending->setText(pending.isEmpty() ? QStringLiteral("nothing yet") : pending.join(QStringLiteral("; ")));
    labels.fileName->setText(model.manualCaptureFilenamePreview(checkpointName));

    const qint64 key = model.recorderPreviewImage() ? model.recorderPreviewImage()->cacheKey() : 0;
    if (key == previewKey)
        return;
    previewKey = key;
    if (model.recorderPreviewImage() && !model.recorderPreviewImage()->isNull())
        labels.preview->setPixmap(
            QPixmap::fromImage(model.recorderPreviewImage()->scaledToHeight(previewHeight, Qt::SmoothTransformation)));
    else if (noPreview.isEmpty())
        labels.preview->clear();
    else
        labels.preview->setText(noPreview);
}
