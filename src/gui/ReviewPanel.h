#pragma once
// Review: the generated screenshots by language and device, those held back
// for review first. A held-back screenshot is shown beside the checkpoint it
// drifted from, with what differs highlighted. The localization warnings of
// the last run, each of which can be dismissed, and the contact sheet of
// the whole run. Also opening, revealing and trashing screenshots,
// exporting diagnostics and the customer guide.

#include "PanelActions.h"
#include "app/ReviewImage.h"

#include <QFutureWatcher>
#include <QImage>
#include <QWidget>

class GalleryModel;
class QFileSystemWatcher;
class QLabel;
class QListView;
class QListWidget;

class ReviewPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ReviewPanel(const PanelContext &context, QWidget *parent = nullptr);

    const QList<QAction *> &actions() const { return m_actions->all(); }
    GalleryModel *galleryModel() const { return m_gallery; }
    QListWidget *groupList() const { return m_groups; }
    QListView *imageList() const { return m_images; }
    QWidget *comparison() const { return m_comparison; }
    QListWidget *warningList() const { return m_warnings; }
    // Shows the screenshots held back for review, if there are any.
    void showNeedsReview();
    // For tests: lets the comparison being made finish.
    void waitForComparison();

private:
    struct Comparison
    {
        QImage drifted;
        QImage reference;
        QImage difference;
    };
    static Comparison compare(const QString &drifted, const QString &reference, QSize size);

    QWidget *comparisonSection();
    QWidget *warningsSection(QAction *dismiss);
    void refresh();
    void refreshWarnings();
    void dismissSelectedWarning();
    void refreshGroups();
    void watchOutputFolder();
    void outputFolderChanged();
    void selectionChanged();
    void comparisonReady();
    std::optional<ReviewImage> selectedImage() const;
    void trashSelected();

    const PanelContext &m_context;
    PanelActions *m_actions;
    GalleryModel *m_gallery;
    QListWidget *m_groups = nullptr;
    QListView *m_images = nullptr;
    QLabel *m_empty = nullptr;
    QWidget *m_comparison = nullptr;
    QWidget *m_warningsBox = nullptr;
    QListWidget *m_warnings = nullptr;
    QLabel *m_driftedView = nullptr;
    QLabel *m_referenceView = nullptr;
    QLabel *m_differenceView = nullptr;
    QFileSystemWatcher *m_folderWatcher = nullptr;
    QString m_watchedFolder;
    QString m_comparedPath;
    QFutureWatcher<Comparison> m_comparisonJob;
};
