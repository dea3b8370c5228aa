// The window's item models, checked by Qt's model tester while the model
// underneath changes the way the application changes it, and the thumbnail
// loader that feeds two of them.

#include "GuiFixture.h"
#include "TestSupport.h"

#include "CheckpointListModel.h"
#include "GalleryModel.h"
#include "ProjectListModel.h"
#include "RunProgressModel.h"
#include "ThumbnailLoader.h"

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>

class ItemModelsTest : public QObject
{
    Q_OBJECT

    static void test(QAbstractItemModel *model)
    {
        new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest, model);
    }

private slots:
    void projectList()
    {
        ModelFixture f;
        f.model->loadSavedProject();
        ProjectListModel list(*f.model);
        test(&list);
        QCOMPARE(list.rowCount(), 1);
        f.model->startNewProject(QStringLiteral("Second"));
        list.refresh();
        QCOMPARE(list.rowCount(), 2);
        // Newest first, and the new one is current.
        QCOMPARE(list.index(0).data(ProjectListModel::IsCurrentRole).toBool(), true);
        QVERIFY(list.index(0).data().toString().startsWith(QStringLiteral("Second\n1 language")));
        QCOMPARE(list.currentRow(), 0);
        // Opening saves, so the opened project becomes the newest.
        f.model->openProject(*list.item(list.index(1)));
        list.refresh();
        QCOMPARE(list.currentRow(), 0);
        QCOMPARE(list.index(0).data(Qt::FontRole).value<QFont>().bold(), true);
        QVERIFY(!list.index(0).data().toString().startsWith(QStringLiteral("Second")));
        f.model->deleteProject(*list.item(list.index(0)));
        list.refresh();
        QCOMPARE(list.rowCount(), 1);
    }

    void checkpointsReorderByDragAndDrop()
    {
        ModelFixture f;
        f.model->loadSavedProject();
        ThumbnailLoader thumbnails(QSize(40, 80));
        CheckpointListModel list(*f.model, thumbnails);
        test(&list);
        GuiTest::addCheckpoint(*f.model, QStringLiteral("home"));
        GuiTest::addCheckpoint(*f.model, QStringLiteral("explore"), {OperationDraft::tap(147, 790)});
        GuiTest::addCheckpoint(*f.model, QStringLiteral("saved"), {OperationDraft::wait(1.5), OperationDraft::tap(245, 790)});
        list.refresh();
        QCOMPARE(list.rowCount(), 3);
        QCOMPARE(list.index(2).data().toString(), QStringLiteral("03 saved"));
        QVERIFY(list.index(2).data(Qt::ToolTipRole).toString().endsWith(QStringLiteral("After: Wait 1.5s; Tap 245, 790")));

        // The last checkpoint dropped in front of the first.
        std::unique_ptr<QMimeData> dragged(list.mimeData({list.index(2)}));
        QVERIFY(list.canDropMimeData(dragged.get(), Qt::MoveAction, 0, 0, QModelIndex()));
        QVERIFY(!list.dropMimeData(dragged.get(), Qt::MoveAction, 0, 0, QModelIndex())); // the model moves the row
        QTRY_COMPARE(f.model->manualScreens().value(0).name, QStringLiteral("saved"));
        list.refresh();
        QCOMPARE(list.index(0).data().toString(), QStringLiteral("01 saved"));
        QVERIFY(QFileInfo::exists(f.model->manualCaptureDirectory() + QStringLiteral("/01-saved.png")));
        QCOMPARE(f.model->project().screens.value(0).name, QStringLiteral("saved"));

        // Thumbnails arrive later, never larger than asked for.
        list.index(1).data(Qt::DecorationRole);
        thumbnails.waitForIdle();
        QTRY_VERIFY(!list.index(1).data(Qt::DecorationRole).value<QPixmap>().isNull());
        const QPixmap thumbnail = list.index(1).data(Qt::DecorationRole).value<QPixmap>();
        QVERIFY(thumbnail.width() <= 40 && thumbnail.height() <= 80);

        f.model->resetRecordedFlow();
        list.refresh();
        QCOMPARE(list.rowCount(), 0);
    }

    void runProgressGrid()
    {
        ModelFixture f;
        AppModel &m = *f.model;
        RunProgressModel grid(m);
        test(&grid);
        arrange(m).project.devices = {QStringLiteral("D1"), QStringLiteral("D2")};
        arrange(m).project.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE"), QStringLiteral("fr-FR")};
        arrange(m).project.screens = QList<ScreenDraft>(2);
        arrange(m).availableDevices
            = {{QStringLiteral("iPhone 15"), QStringLiteral("D1"), {}, QStringLiteral("Booted")}};
        grid.refresh();
        QCOMPARE(grid.rowCount(), 3);
        QCOMPARE(grid.columnCount(), 2);
        QCOMPARE(grid.headerData(0, Qt::Horizontal).toString(), QStringLiteral("iPhone 15"));
        QCOMPARE(grid.headerData(2, Qt::Vertical).toString(), QStringLiteral("fr-FR"));
        QCOMPARE(grid.index(0, 0).data().toString(), QStringLiteral("not run"));

        arrange(m).runProgress = m.initializedRunProgress();
        m.updateRunProgress(QStringLiteral("de-DE"), QStringLiteral("D2"), 1, RunProgressState::running);
        grid.refresh();
        QCOMPARE(grid.index(1, 1).data().toString(), QStringLiteral("1/2 running"));
        QCOMPARE(grid.index(1, 1).data(RunProgressModel::FractionRole).toDouble(), 0.5);
        QCOMPARE(grid.index(0, 0).data().toString(), QStringLiteral("0/2 queued"));

        arrange(m).project.languages.removeFirst();
        grid.refresh();
        QCOMPARE(grid.rowCount(), 2);
    }

    void galleryGroupsNeedsReviewFirst()
    {
        ModelFixture f;
        f.model->loadSavedProject();
        const QString out = f.model->project().outputDirectory;
        for (const char *path : {"de-DE/iPhone 15/01-home.png", "de-DE/iPhone 15/02-explore.png", "de-DE/iPad/01-home.png",
                                 "en-US/iPhone 15/01-home.png", "_needs-review/fr-FR/iPhone 15/02-explore.png",
                                 "manual/01-home.png"})
            GuiTest::writeImage(out + QLatin1Char('/') + QLatin1String(path), Qt::white, QSize(20, 40));
        ThumbnailLoader thumbnails(QSize(40, 80));
        GalleryModel gallery(*f.model, thumbnails);
        test(&gallery);
        f.model->refreshReviewImages();
        gallery.refresh();
        QStringList titles;
        for (const GalleryGroup &group : gallery.groups())
            titles.append(QStringLiteral("%1 (%2)").arg(group.title).arg(group.images.size()));
        QCOMPARE(titles, QStringList({"Needs review (1)", "de-DE \u00B7 iPad (1)", "de-DE \u00B7 iPhone 15 (2)",
                                      "en-US \u00B7 iPhone 15 (1)"}));
        gallery.setCurrentGroup(QStringLiteral("de-DE/iPhone 15"));
        QCOMPARE(gallery.rowCount(), 2);
        QCOMPARE(gallery.index(1).data().toString(), QStringLiteral("02-explore.png"));
        gallery.setCurrentGroup(GalleryModel::needsReviewKey);
        QCOMPARE(gallery.index(0).data(GalleryModel::NeedsReviewRole).toBool(), true);

        // The output folder removed under the gallery empties it.
        QDir(out).removeRecursively();
        f.model->refreshReviewImages();
        gallery.refresh();
        QVERIFY(gallery.groups().isEmpty());
        QCOMPARE(gallery.rowCount(), 0);
    }

    // A thousand screenshot files are listed without decoding one of them;
    // only the rows a view asks to draw are decoded, off the main thread.
    void thumbnailsAreDecodedOnlyWhenAskedFor()
    {
        QTemporaryDir dir;
        const QString path = GuiTest::writeImage(dir.filePath(QStringLiteral("a.png")), Qt::red, QSize(1290, 2796));
        ThumbnailLoader loader(QSize(100, 100));
        QSignalSpy ready(&loader, &ThumbnailLoader::ready);
        QVERIFY(!loader.thumbnail(path));
        QVERIFY(!loader.thumbnail(path)); // asked twice, decoded once
        QTRY_COMPARE(ready.count(), 1);
        const std::optional<QPixmap> thumbnail = loader.thumbnail(path);
        QVERIFY(thumbnail);
        QCOMPARE(thumbnail->size(), QSize(46, 100));
        QVERIFY(!loader.thumbnail(dir.filePath(QStringLiteral("missing.png"))));
        QTRY_COMPARE(ready.count(), 2);
        QVERIFY(!loader.thumbnail(dir.filePath(QStringLiteral("missing.png")))); // known to be no image
        QCOMPARE(ready.count(), 2);
    }
};

VANTREL_TEST(ItemModelsTest);
#include "ItemModelsTest.moc"
