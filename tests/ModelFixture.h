#pragma once
// A model on a private data root with scripted desktop services, for tests
// of model operations. Nothing here touches the user's real folders.

#include "model/AppModel.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <memory>

// The model's state, writable: for a test that arranges a scenario no
// operation reaches quickly (a recording half-way, a run that failed).
// Fronts read the state through the model's getters and change it only
// through its operations.
class ModelState
{
public:
    explicit ModelState(AppModel &model)
        : project(model.m_project), availableDevices(model.m_availableDevices),
          pendingOperations(model.m_pendingOperations), runLog(model.m_runLog),
          isRecordingFlow(model.m_isRecordingFlow), lastManualCaptureURL(model.m_lastManualCaptureURL),
          recorderPreviewPixelSize(model.m_recorderPreviewPixelSize),
          recorderPreviewScale(model.m_recorderPreviewScale), devicePointSizes(model.m_devicePointSizes),
          runProgress(model.m_runProgress), lastRunOutcome(model.m_lastRunOutcome),
          lastRecordedActionAt(model.m_lastRecordedActionAt), lastRunLogStart(model.m_lastRunLogStart),
          runProcess(model.m_runProcess)
    {
    }

    ScreenshotProject &project;
    QList<SimulatorDevice> &availableDevices;
    QList<OperationDraft> &pendingOperations;
    QString &runLog;
    bool &isRecordingFlow;
    std::optional<QString> &lastManualCaptureURL;
    QSizeF &recorderPreviewPixelSize;
    double &recorderPreviewScale;
    QHash<QString, QSizeF> &devicePointSizes;
    QHash<QString, RunProgress> &runProgress;
    std::optional<RunOutcome> &lastRunOutcome;
    std::optional<ReferenceSeconds> &lastRecordedActionAt;
    qsizetype &lastRunLogStart;
    std::shared_ptr<ChildProcess> &runProcess;
};

inline ModelState arrange(AppModel &model)
{
    return ModelState(model);
}

struct ModelFixture
{
    QTemporaryDir root;
    ScriptedPlatformServices *platform = nullptr;
    std::unique_ptr<AppModel> model;

    ModelFixture()
    {
        auto services = std::make_unique<ScriptedPlatformServices>();
        platform = services.get();
        model = std::make_unique<AppModel>(root.path(), std::move(services));
    }
};

// A screenshot-like PNG of `size`, filled with `color`, folders made as needed.
inline QString writeImage(const QString &path, QColor color, QSize size = QSize(393, 852))
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    if (!image.save(path))
        qFatal("could not write %s", qPrintable(path));
    return path;
}
