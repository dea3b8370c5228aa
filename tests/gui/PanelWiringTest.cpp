// One wiring test per panel: a button or menu item calls the model's
// operation, and the panel shows the state that follows.

#include "GuiFixture.h"
#include "TestSupport.h"

#include "CheckpointListModel.h"
#include "GalleryModel.h"
#include "GeneratePanel.h"
#include "LibraryPanel.h"
#include "ProjectListModel.h"
#include "RecordPanel.h"
#include "ReviewPanel.h"
#include "RunProgressModel.h"
#include "SetupPanel.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTableWidget>

namespace {

QListWidgetItem *languageItem(QListWidget *list, const QString &code)
{
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->text().endsWith(QStringLiteral("\u2014 ") + code))
            return list->item(i);
    return nullptr;
}

} // namespace

class PanelWiringTest : public QObject
{
    Q_OBJECT

private slots:
    void libraryNewRenameDelete()
    {
        GuiFixture f;
        LibraryPanel *library = f.window->library();
        f.dialogs.textAnswer = QStringLiteral("Summer Trips");
        library->newProjectAction()->trigger();
        GuiTest::settle();
        QCOMPARE(AppModel::displayName(f.model->project()), QStringLiteral("Summer Trips"));
        QCOMPARE(f.window->windowTitle(), QStringLiteral("Vantrel \u2014 Summer Trips"));
        QCOMPARE(library->projectModel()->rowCount(), 2);
        QCOMPARE(library->snapshotList()->count(), 1); // the old project, archived first

        // Clicking the other project opens it.
        const QModelIndex other = library->projectModel()->index(1);
        QTest::mouseClick(library->projectList()->viewport(), Qt::LeftButton, {},
                          library->projectList()->visualRect(other).center());
        GuiTest::settle();
        QVERIFY(f.window->windowTitle() != QStringLiteral("Vantrel \u2014 Summer Trips"));
        QCOMPARE(library->projectModel()->currentRow(), 0); // opened, saved, so the newest

        // Deleting asks first; a refusal keeps the project.
        library->projectList()->setCurrentIndex(library->projectModel()->index(1));
        f.dialogs.confirmAnswer = false;
        QAction *remove = GuiTest::action(library->actions(), "Delete Project");
        remove->trigger();
        GuiTest::settle();
        QCOMPARE(library->projectModel()->rowCount(), 2);
        QVERIFY(f.dialogs.asked.last().contains(QStringLiteral("Summer Trips")));
        f.dialogs.confirmAnswer = true;
        remove->trigger();
        GuiTest::settle();
        QCOMPARE(library->projectModel()->rowCount(), 1);
        QCOMPARE(f.platform->trashed.size(), 1);
    }

    void setupEditsSaveAtOnce()
    {
        GuiFixture f;
        f.window->showPanel(MainWindow::setupPanel);
        SetupPanel *setup = f.window->setup();
        QListWidgetItem *german = languageItem(setup->languageList(), QStringLiteral("de-DE"));
        QVERIFY(german);
        german->setCheckState(Qt::Checked);
        GuiTest::settle();
        QCOMPARE(f.model->project().languages, QStringList({"en-US", "de-DE"}));

        setup->languageSearch()->setText(QStringLiteral("german"));
        QVERIFY(!german->isHidden());
        QVERIFY(languageItem(setup->languageList(), QStringLiteral("en-US"))->isHidden());

        setup->customLanguage()->setText(QStringLiteral("x-pirate"));
        QTest::keyClick(setup->customLanguage(), Qt::Key_Return);
        GuiTest::settle();
        QCOMPARE(f.model->project().languages.last(), QStringLiteral("x-pirate"));
        QVERIFY(languageItem(setup->languageList(), QStringLiteral("custom")) != nullptr);

        setup->launchWait()->setValue(4.5);
        setup->resetAppData()->setChecked(false);
        setup->launchArguments()->setText(QStringLiteral("-UITestMode YES \"-Name\" \"Two words\""));
        emit setup->launchArguments()->editingFinished();
        GuiTest::settle();
        // Saved, not only shown: a fresh load reads them back.
        AppModel reloaded(f.root.path(), std::make_unique<ScriptedPlatformServices>());
        reloaded.loadSavedProject();
        QCOMPARE(reloaded.project().launchWaitSeconds, 4.5);
        QCOMPARE(reloaded.project().resetAppData, false);
        QCOMPARE(reloaded.project().globalLaunchArguments, QStringList({"-UITestMode", "YES", "-Name", "Two words"}));
        QCOMPARE(reloaded.project().languages.size(), 3);

        f.dialogs.folderAnswer = f.root.filePath(QStringLiteral("elsewhere"));
        GuiTest::action(setup->actions(), "Choose Output Folder")->trigger();
        GuiTest::settle();
        QCOMPARE(setup->outputFolder()->text(), f.root.filePath(QStringLiteral("elsewhere")));

        GuiTest::addCheckpoint(*f.model, QStringLiteral("home"));
        GuiTest::settle();
        QCOMPARE(setup->screenTable()->rowCount(), 1);
        setup->screenTable()->item(0, 1)->setText(QStringLiteral("signed-in"));
        GuiTest::settle();
        QCOMPARE(f.model->project().screens.first().state, QStringLiteral("signed-in"));
    }

    void recordStartsStopsAndManagesCheckpoints()
    {
        GuiFixture f;
        f.window->showPanel(MainWindow::recordPanel);
        RecordPanel *record = f.window->record();
        // Ctrl+R without a simulator: the model refuses and the banner says why.
        QTest::keySequence(f.window.get(), QKeySequence(Qt::CTRL | Qt::Key_R));
        GuiTest::settle();
        QVERIFY(!f.model->isRecordingFlow());
        QVERIFY(f.window->banner()->isVisible());
        QCOMPARE(f.window->bannerText()->text(), QStringLiteral("Attach to a booted simulator before recording."));
        QVERIFY(!record->saveCheckpointAction()->isEnabled()); // no device to take it from

        GuiTest::addCheckpoint(*f.model, QStringLiteral("home"));
        GuiTest::addCheckpoint(*f.model, QStringLiteral("explore"), {OperationDraft::tap(147, 790)});
        GuiTest::settle();
        QCOMPARE(record->checkpointModel()->rowCount(), 2);
        // Each checkpoint has the room of a whole thumbnail before any is
        // decoded, or the pictures would arrive clipped to a line of text.
        const QRect cell = record->checkpointList()->visualRect(record->checkpointModel()->index(1));
        QVERIFY2(cell.height() > 234, qPrintable(QVariant(cell).toString()));
        record->checkpointList()->setCurrentIndex(record->checkpointModel()->index(1));
        f.dialogs.textAnswer = QStringLiteral("Discover");
        GuiTest::action(record->actions(), "Rename Checkpoint")->trigger();
        GuiTest::settle();
        QCOMPARE(record->checkpointModel()->index(1).data().toString(), QStringLiteral("02 Discover"));
        QVERIFY(QFileInfo::exists(f.model->manualCaptureDirectory() + QStringLiteral("/02-Discover.png")));

        record->checkpointList()->setCurrentIndex(record->checkpointModel()->index(0));
        GuiTest::action(record->actions(), "Delete Checkpoint")->trigger();
        GuiTest::settle();
        QCOMPARE(record->checkpointModel()->rowCount(), 1);
        QCOMPARE(record->checkpointModel()->index(0).data().toString(), QStringLiteral("01 Discover"));
        QCOMPARE(record->fileNamePreview()->text(), QStringLiteral("02-auto-name.png"));
        record->checkpointName()->setText(QStringLiteral("Settings"));
        QCOMPARE(record->fileNamePreview()->text(), QStringLiteral("02-Settings.png"));
    }

    void generateShowsReadinessProgressAndOutcome()
    {
        GuiFixture f;
        f.window->showPanel(MainWindow::generatePanel);
        GeneratePanel *generate = f.window->generate();
        QCOMPARE(generate->preflightList()->count(), 6);
        QCOMPARE(generate->preflightList()->item(0)->text(),
                 QStringLiteral("\u2717  Simulator attached: Attach a running iOS Simulator"));
        QCOMPARE(generate->readinessLine()->text(), QStringLiteral("Attach to a booted simulator or select a device first."));
        QVERIFY(!generate->generateAction()->isEnabled());
        QVERIFY(!generate->cancelAction()->isEnabled());

        // A complete project on a machine without the build tools: the run
        // starts, fails, and the panel shows how it ended.
        ScreenshotProject &p = arrange(*f.model).project;
        p.bundleId = QStringLiteral("com.example.demo");
        p.devices = {QStringLiteral("D1")};
        p.attachedDeviceName = QStringLiteral("iPhone 15");
        GuiTest::addCheckpoint(*f.model, QStringLiteral("home"));
        GuiTest::settle();
        QCOMPARE(generate->preflightList()->item(0)->text(), QStringLiteral("\u2713  Simulator attached: iPhone 15"));
        QVERIFY(generate->generateAction()->isEnabled());
        generate->generateAction()->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(f.model->lastRunOutcome().has_value() && !f.model->isRunning(), 20000);
        GuiTest::settle();
        QCOMPARE(generate->outcomeTitle()->text(), QStringLiteral("Generation failed"));
        QVERIFY(generate->outcomeTitle()->isVisible());
        QVERIFY(!generate->driftBox()->isVisible());

        // A drift stop shows its heading; the grid shows each pair.
        arrange(*f.model).lastRunOutcome = RunOutcome{RunOutcomeKind::failed, QStringLiteral("Generation failed"),
                                             AppModel::driftStopMessage(), 0, 0};
        arrange(*f.model).runProgress = f.model->initializedRunProgress();
        f.model->updateRunProgress(QStringLiteral("en-US"), QStringLiteral("D1"), 1, RunProgressState::failed);
        f.model->appendLog(QStringLiteral("Stopped: suspicious screenshots moved to _needs-review: 01-home.png"));
        GuiTest::settle();
        QVERIFY(generate->driftBox()->isVisible());
        QCOMPARE(generate->progressModel()->index(0, 0).data().toString(), QStringLiteral("1/1 failed"));
        QVERIFY(generate->runLog()->toPlainText().endsWith(QStringLiteral("01-home.png\n")));
        GuiTest::action(generate->actions(), "Show Screenshots to Review")->trigger();
        QCOMPARE(f.window->currentPanel(), MainWindow::reviewPanel);
    }

    // Screenshots already found when the window opens (at start-up) are
    // shown, their first group chosen.
    void reviewComparesTrashesAndFollowsTheFolder()
    {
        GuiFixture f;
        f.window.reset();
        GuiTest::addCheckpoint(*f.model, QStringLiteral("home"));
        const QString out = f.model->project().outputDirectory;
        GuiTest::writeImage(out + QStringLiteral("/de-DE/iPhone 15/01-home.png"), Qt::white);
        GuiTest::writeImage(out + QStringLiteral("/_needs-review/fr-FR/iPhone 15/01-home.png"), Qt::black);
        f.model->refreshReviewImages();
        f.window = std::make_unique<MainWindow>(*f.model, f.dialogs);
        f.window->showPanel(MainWindow::reviewPanel);
        f.window->show();
        GuiTest::settle();
        ReviewPanel *review = f.window->review();
        QCOMPARE(review->groupList()->count(), 2);
        QCOMPARE(review->groupList()->item(0)->text(), QStringLiteral("Needs review (1)"));
        QCOMPARE(review->groupList()->currentRow(), 0);

        // The held-back screenshot beside the checkpoint it drifted from.
        review->imageList()->setCurrentIndex(review->galleryModel()->index(0));
        QVERIFY(review->comparison()->isVisible());
        review->waitForComparison();
        GuiTest::settle();
        const QList<QLabel *> pictures = review->comparison()->findChildren<QLabel *>();
        int shown = 0;
        for (QLabel *label : pictures)
            shown += label->pixmap().isNull() ? 0 : 1;
        QCOMPARE(shown, 3);

        GuiTest::action(review->actions(), "Open Screenshot")->trigger();
        QCOMPARE(f.platform->opened, QStringList{out + QStringLiteral("/_needs-review/fr-FR/iPhone 15/01-home.png")});
        GuiTest::action(review->actions(), "Move Screenshot to Trash")->trigger();
        GuiTest::settle();
        QCOMPARE(review->groupList()->count(), 1);
        QVERIFY(!review->comparison()->isVisible());

        // The output folder deleted behind the application's back.
        QDir(out).removeRecursively();
        QTRY_COMPARE(review->groupList()->count(), 0);
        QVERIFY(f.model->reviewImages().isEmpty());
    }

    void reviewDismissesWarningsAndOpensTheContactSheet()
    {
        GuiFixture f;
        GuiTest::addCheckpoint(*f.model, QStringLiteral("home"));
        arrange(*f.model).project.languages = {QStringLiteral("en-US"), QStringLiteral("ja-JP")};
        const QString out = f.model->project().outputDirectory;
        for (const char *language : {"en-US", "ja-JP"})
            GuiTest::writeImage(out + QStringLiteral("/%1/iPhone 15/01-home.png").arg(language), Qt::white);
        f.model->recordLocalizationWarnings({{"ja-JP", "en-US", "iPhone 15", "01-home.png"}});
        f.model->refreshReviewImages();
        f.window->showPanel(MainWindow::reviewPanel);
        GuiTest::settle();
        ReviewPanel *review = f.window->review();
        QCOMPARE(review->warningList()->count(), 1);
        QCOMPARE(review->warningList()->item(0)->text(),
                 QStringLiteral("ja-JP iPhone 15/01-home.png looks the same as en-US: is the app localized for ja-JP?"));
        QVERIFY(review->warningList()->isVisible());

        QAction *dismiss = GuiTest::action(review->actions(), "Dismiss Warning");
        QVERIFY(dismiss->isEnabled());
        dismiss->trigger();
        GuiTest::settle();
        QCOMPARE(review->warningList()->count(), 0);
        QVERIFY(!review->warningList()->isVisible());
        QVERIFY(!dismiss->isEnabled());
        QVERIFY(f.model->activeLocalizationWarnings().isEmpty());
        QCOMPARE(f.model->localizationWarnings().size(), 1); // kept, marked dismissed

        GuiTest::action(review->actions(), "Contact Sheet")->trigger();
        GuiTest::settle();
        const QString page = out + QStringLiteral("/index.html");
        QCOMPARE(f.platform->opened, QStringList{page}); // its content: ContactSheetTest
    }

    void bannerIsDismissed()
    {
        GuiFixture f;
        f.model->setLastError(QStringLiteral("Could not load simulators: xcrun is missing"));
        GuiTest::settle();
        QVERIFY(f.window->banner()->isVisible());
        const QList<QPushButton *> buttons = f.window->banner()->findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 1);
        QTest::mouseClick(buttons.first(), Qt::LeftButton);
        GuiTest::settle();
        QVERIFY(!f.model->lastError());
        QVERIFY(!f.window->banner()->isVisible());
    }

    // Every panel fits a small screen, even with the long texts of a run
    // that stopped for review (a panel wider than that widens the window).
    void windowFitsASmallScreen()
    {
        GuiFixture f;
        GuiTest::addCheckpoint(*f.model, QStringLiteral("home"));
        const QString drift = QStringLiteral("Generated screenshots drifted from the recorded flow. Check "
                                             "output/_needs-review and re-record from the last good checkpoint.");
        f.model->setLastError(drift);
        arrange(*f.model).lastRunOutcome
            = RunOutcome{RunOutcomeKind::failed, QStringLiteral("Generation failed"), drift};
        f.model->notifyChanged();
        for (int panel = MainWindow::setupPanel; panel <= MainWindow::reviewPanel; ++panel) {
            f.window->showPanel(MainWindow::Panel(panel));
            GuiTest::settle();
            const QSize least = f.window->minimumSizeHint();
            QVERIFY2(least.width() <= 1024 && least.height() <= 768,
                     qPrintable(QStringLiteral("panel %1 needs %2 x %3").arg(panel).arg(least.width()).arg(least.height())));
        }
    }

    // Every action of every panel is in a menu.
    void everyPanelActionIsInAMenu()
    {
        GuiFixture f;
        QList<QAction *> inMenus;
        for (QAction *menu : f.window->menuBar()->actions())
            inMenus += menu->menu()->actions();
        QList<QAction *> panelActions = f.window->library()->actions() + f.window->setup()->actions()
                                        + f.window->record()->actions() + f.window->generate()->actions()
                                        + f.window->review()->actions();
        for (QAction *action : panelActions)
            QVERIFY2(inMenus.contains(action), qPrintable(action->text()));
    }
};

VANTREL_TEST(PanelWiringTest);
#include "PanelWiringTest.moc"
