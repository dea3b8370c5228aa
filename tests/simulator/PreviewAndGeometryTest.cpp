// The preview screenshot, the Simulator window's frame and where the
// recorder panel goes.

#include "ModelFixture.h"
#include "TestSupport.h"
#include "XcrunStandIn.h"

#include "simulator/RecorderPanelPlacement.h"
#include "simulator/SimulatorWindowLocator.h"

#include <QTest>

using OptionalRect = std::optional<QRectF>;
Q_DECLARE_METATYPE(OptionalRect)
Q_DECLARE_METATYPE(QList<RawWindowInfo>)

class PreviewAndGeometryTest : public QObject
{
    Q_OBJECT

    QTemporaryDir root;

    std::unique_ptr<AppModel> attachedModel()
    {
        auto model = std::make_unique<AppModel>(root.path(), std::make_unique<ScriptedPlatformServices>());
        arrange(*model).project.devices = {"PHONE"};
        return model;
    }

    static QString screenshotPath(const XcrunStandIn &xcrun)
    {
        for (const QStringList &call : xcrun.calls())
            if (call.value(3) == "screenshot")
                return call.value(4);
        return {};
    }

private slots:
    void previewFailures()
    {
        if (TestSupport::realToolShadowsStandIn({"xcrun"}))
            QSKIP("a real xcrun comes first on the runner's search path here");
        XcrunStandIn xcrun;
        xcrun.respond("list", "{\"devices\": {}}");
        AppModel detached(root.path(), std::make_unique<ScriptedPlatformServices>());
        detached.refreshRecorderPreview();
        QCOMPARE(*detached.lastError(), QString("Attach to a booted simulator before refreshing preview."));

        auto model = attachedModel();
        model->refreshRecorderPreview(); // the tool wrote no file
        QCOMPARE(*model->lastError(),
                 QString("Could not refresh simulator preview: Could not load preview screenshot."));

        xcrun.respond("io-screenshot", "", 1, "Shutdown\n");
        model->refreshRecorderPreview();
        QVERIFY(model->lastError()->startsWith("Could not refresh simulator preview: Command failed: xcrun simctl io "
                                             "PHONE screenshot "));

        // A failing scale keeps the picture that was already taken.
        xcrun.respond("io-screenshot", "");
        xcrun.respond("io-enumerate", "", 1, "no display\n");
        xcrun.setScreenshot(QImage(10, 20, QImage::Format_RGB32));
        model->refreshRecorderPreview();
        QVERIFY(model->lastError()->endsWith("enumerate\nno display\n"));
        QCOMPARE(model->recorderPreviewPixelSize(), QSizeF(10, 20));
        QCOMPARE(model->recorderPreviewScale(), 1.0);
        QVERIFY(QFileInfo(screenshotPath(xcrun)).fileName().startsWith("quillmark-preview-"));
        QVERIFY(!QFile::exists(screenshotPath(xcrun)));
    }

    // The attached simulator shut down mid-recording: the preview after the
    // next recorded action fails, and the recording stops and says why
    // instead of recording clicks on whatever the Simulator window shows.
    void shutDownSimulatorStopsTheRecording()
    {
        if (TestSupport::realToolShadowsStandIn({"xcrun"}))
            QSKIP("a real xcrun comes first on the runner's search path here");
        const auto listing = [](const char *state) {
            return QByteArray(R"({"devices": {"com.apple.CoreSimulator.SimRuntime.iOS-17-5": [)"
                              R"({"name": "iPhone 15", "udid": "PHONE", "isAvailable": true, "state": ")")
                   + state + "\"}]}}";
        };
        XcrunStandIn xcrun;
        auto model = attachedModel();
        arrange(*model).project.screens.append(ScreenDraft{.name = "home"});
        arrange(*model).isRecordingFlow = true;
        arrange(*model).pendingOperations = {OperationDraft::tap(1, 1)};
        xcrun.setScreenshot(QImage(10, 20, QImage::Format_RGB32));
        xcrun.respond("list", listing("Booted"));
        model->refreshPreviewAfterRecordedAction();
        QVERIFY(model->isRecordingFlow());
        for (const QStringList &call : xcrun.calls())
            QVERIFY2(call.value(1) != "list", "a preview that works never lists the devices");

        // A preview that fails on a booted device is only a failed preview.
        xcrun.respond("io-screenshot", "", 1, "busy\n");
        model->refreshPreviewAfterRecordedAction();
        QVERIFY(model->isRecordingFlow());
        QVERIFY(model->lastError()->startsWith("Could not refresh simulator preview: "));

        xcrun.respond("io-screenshot", "", 1, "Unable to lookup in current state: Shutdown\n");
        xcrun.respond("list", listing("Shutdown"));
        model->refreshPreviewAfterRecordedAction();
        QVERIFY(!model->isRecordingFlow());
        QCOMPARE(model->lastError().value_or(QString()),
                 QString("iPhone 15 is no longer booted. Recording stopped; the checkpoints saved so far are kept."));
        QCOMPARE(model->project().screens.size(), 1);
        QVERIFY(model->pendingOperations().isEmpty());
    }

    void windowFrame_data()
    {
        QTest::addColumn<QList<RawWindowInfo>>("windows");
        QTest::addColumn<OptionalRect>("screen");
        QTest::addColumn<OptionalRect>("frame");
        const QRectF screen(0, 0, 1440, 900);
        const RawWindowInfo simulator{"Simulator", 0, QRectF(0, 0, 400, 800)};
        QTest::newRow("top left") << QList<RawWindowInfo>{simulator} << OptionalRect(screen)
                                  << OptionalRect(QRectF(0, 100, 400, 800));
        QTest::newRow("front-most wins")
            << QList<RawWindowInfo>{{"Finder", 0, QRectF(0, 0, 900, 900)}, {"Simulator", 0, QRectF(500, 50, 300, 600)},
                                    simulator}
            << OptionalRect(screen) << OptionalRect(QRectF(500, 250, 300, 600));
        QTest::newRow("narrow, other layer, unreadable skipped")
            << QList<RawWindowInfo>{{"Simulator", 0, QRectF(0, 0, 100, 500)},
                                    {"Simulator", 3, QRectF(0, 0, 500, 500)},
                                    {"Simulator", 0, std::nullopt},
                                    {"Simulator", 0, QRectF(10, 0, 500, 100)},
                                    {"Simulator", 0, QRectF(20, 40, 101, 101)}}
            << OptionalRect(screen) << OptionalRect(QRectF(20, 759, 101, 101));
        QTest::newRow("owner must match exactly")
            << QList<RawWindowInfo>{{"simulator", 0, QRectF(0, 0, 400, 800)}, {"Simulator ", 0, QRectF(0, 0, 400, 800)}}
            << OptionalRect(screen) << OptionalRect();
        QTest::newRow("no main screen") << QList<RawWindowInfo>{simulator} << OptionalRect() << OptionalRect(QRectF(0, -800, 400, 800));
        QTest::newRow("screen not at the origin") << QList<RawWindowInfo>{simulator} << OptionalRect(QRectF(0, 100, 1440, 900))
                                                  << OptionalRect(QRectF(0, 200, 400, 800));
        QTest::newRow("no windows") << QList<RawWindowInfo>{} << OptionalRect(screen) << OptionalRect();
    }

    void windowFrame()
    {
        QFETCH(QList<RawWindowInfo>, windows);
        QFETCH(OptionalRect, screen);
        QFETCH(OptionalRect, frame);
        ScriptedPlatformServices platform;
        platform.windows = windows;
        platform.screenFrame = screen;
        QCOMPARE(SimulatorWindowLocator::windowFrame(platform), frame);
    }

    void panelPlacement_data()
    {
        QTest::addColumn<OptionalRect>("visible");
        QTest::addColumn<OptionalRect>("simulator");
        QTest::addColumn<QPointF>("origin");
        const QRectF visible(0, 0, 1440, 875);
        QTest::newRow("no simulator: top right") << OptionalRect(visible) << OptionalRect()
                                                 << QPointF(1440 - 460 - 28, 875 - 760 - 42);
        QTest::newRow("no screen either") << OptionalRect() << OptionalRect() << QPointF(1200 - 488, 800 - 802);
        QTest::newRow("right of the simulator, tops aligned") << OptionalRect(visible)
                                                              << OptionalRect(QRectF(100, 50, 400, 800))
                                                              << QPointF(514, 90);
        QTest::newRow("near the right edge: to its left") << OptionalRect(visible)
                                                          << OptionalRect(QRectF(900, 50, 400, 800))
                                                          << QPointF(900 - 474, 90);
        QTest::newRow("left side clamped to the margin") << OptionalRect(visible)
                                                         << OptionalRect(QRectF(200, 50, 1100, 800))
                                                         << QPointF(12, 90);
        QTest::newRow("exactly fits on the right") << OptionalRect(visible) << OptionalRect(QRectF(566, 50, 400, 800))
                                                   << QPointF(980, 90);
        QTest::newRow("short simulator: bottom margin") << OptionalRect(visible) << OptionalRect(QRectF(100, 20, 300, 400))
                                                        << QPointF(414, 12);
        QTest::newRow("tall simulator: below the top margin")
            << OptionalRect(visible) << OptionalRect(QRectF(100, 0, 400, 1000)) << QPointF(514, 875 - 760 - 12);
        QTest::newRow("offset visible frame") << OptionalRect(QRectF(0, 25, 1440, 850))
                                              << OptionalRect(QRectF(100, 0, 400, 700)) << QPointF(514, 37);
    }

    void panelPlacement()
    {
        QFETCH(OptionalRect, visible);
        QFETCH(OptionalRect, simulator);
        QFETCH(QPointF, origin);
        QCOMPARE(RecorderPanelPlacement::frame(visible, simulator), QRectF(origin, QSizeF(460, 760)));
    }
};

VANTREL_TEST(PreviewAndGeometryTest);
#include "PreviewAndGeometryTest.moc"
