#include "ReviewPanel.h"

#include "BusyState.h"
#include "Dialogs.h"
#include "GalleryModel.h"
#include "ModelWatcher.h"
#include "ThumbnailLoader.h"
#include "app/ReviewComparison.h"
#include "model/AppModel.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QSplitter>
#include <QVBoxLayout>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>

namespace {

// How large each of the three pictures of a comparison is drawn: small
// enough that a row of thumbnails stays in view above them.
const QSize comparisonSize(140, 303);

QImage readScaled(const QString &path, QSize bound)
{
    QImageReader reader(path);
    if (reader.size().isValid())
        reader.setScaledSize(reader.size().scaled(bound, Qt::KeepAspectRatio));
    return reader.read();
}

QLabel *pictureLabel(const QString &name)
{
    auto *label = new QLabel;
    label->setAlignment(Qt::AlignCenter);
    label->setMinimumSize(comparisonSize);
    label->setAccessibleName(name);
    return label;
}

QWidget *captioned(const QString &caption, QLabel *picture)
{
    auto *box = new QWidget;
    auto *layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(caption), 0, Qt::AlignHCenter);
    layout->addWidget(picture);
    return box;
}

} // namespace

ReviewPanel::ReviewPanel(const PanelContext &context, QWidget *parent)
    : QWidget(parent),
      m_context(context),
      m_actions(new PanelActions(context, this)),
      m_gallery(new GalleryModel(context.model, context.thumbnails, this)),
      m_folderWatcher(new QFileSystemWatcher(this))
{
    AppModel &model = context.model;
    const auto hasSelection = [this] { return selectedImage().has_value(); };
    QAction *open = m_actions->add(QStringLiteral("&Open Screenshot"), [this] {
        if (const std::optional<ReviewImage> image = selectedImage())
            m_context.model.openReviewImage(*image);
    }, hasSelection);
    QAction *reveal = m_actions->add(QStringLiteral("Re&veal Screenshot"), [this] {
        if (const std::optional<ReviewImage> image = selectedImage())
            m_context.model.revealReviewImage(*image);
    }, hasSelection);
    QAction *trash = m_actions->add(QStringLiteral("Move Screenshot to &Trash…"), [this] { trashSelected(); }, hasSelection);
    QAction *diagnostics = m_actions->add(QStringLiteral("Export &Diagnostics"), [&model] { model.exportDiagnostics(); });
    QAction *guide = m_actions->add(QStringLiteral("Customer &Guide"), [&model] { model.openCustomerGuide(); });
    QAction *refreshAction = m_actions->add(QStringLiteral("Refresh &Gallery"), [&model] { model.refreshReviewImages(); });
    QAction *contactSheet = m_actions->add(QStringLiteral("Contact &Sheet"), [&model] { model.openContactSheet(); });
    QAction *dismiss = m_actions->add(QStringLiteral("Dis&miss Warning"), [this] { dismissSelectedWarning(); },
                                      [this] { return m_warnings->currentItem() != nullptr; });

    m_groups = new QListWidget;
    m_groups->setAccessibleName(QStringLiteral("Groups"));
    m_groups->setMaximumWidth(260);
    connect(m_groups, &QListWidget::currentRowChanged, this, [this](int row) {
        const QList<GalleryGroup> &groups = m_gallery->groups();
        m_gallery->setCurrentGroup(row >= 0 && row < groups.size() ? groups.at(row).key : QString());
    });

    const QSize thumbnail = context.thumbnails.size();
    m_images = new QListView;
    m_images->setModel(m_gallery);
    m_images->setViewMode(QListView::IconMode);
    m_images->setResizeMode(QListView::Adjust);
    m_images->setMovement(QListView::Static);
    m_images->setUniformItemSizes(true);
    m_images->setIconSize(thumbnail);
    m_images->setGridSize(context.thumbnails.cellSize());
    m_images->setSelectionMode(QAbstractItemView::SingleSelection);
    m_images->setAccessibleName(QStringLiteral("Screenshots"));
    connect(m_images->selectionModel(), &QItemSelectionModel::currentChanged, this, &ReviewPanel::selectionChanged);
    connect(m_gallery, &QAbstractItemModel::modelReset, this, [this] {
        // A group opens on its first screenshot, so that a held-back one is
        // shown beside its reference at once.
        if (m_gallery->rowCount() > 0)
            m_images->setCurrentIndex(m_gallery->index(0));
        selectionChanged();
    });
    connect(m_gallery, &GalleryModel::groupsChanged, this, &ReviewPanel::refreshGroups);
    connect(m_images, &QListView::doubleClicked, open, &QAction::trigger);

    m_empty = new QLabel(QStringLiteral("No generated screenshots yet. Generate them in the Generate panel."));
    m_empty->setAlignment(Qt::AlignCenter);

    auto *shown = new QWidget;
    auto *shownLayout = new QVBoxLayout(shown);
    shownLayout->setContentsMargins(0, 0, 0, 0);
    shownLayout->addWidget(m_empty);
    shownLayout->addWidget(m_images);
    shownLayout->addWidget(warningsSection(dismiss), 0);
    // The user may give the comparison more room than the thumbnails.
    auto *right = new QSplitter(Qt::Vertical);
    right->addWidget(shown);
    right->addWidget(comparisonSection());
    right->setStretchFactor(0, 1);
    right->setChildrenCollapsible(false);
    auto *split = new QSplitter;
    split->addWidget(m_groups);
    split->addWidget(right);
    split->setStretchFactor(1, 1);
    split->setSizes({190, 800}); // the group names are short; the pictures need the room

    auto *buttons = new QHBoxLayout;
    // Short labels: the buttons act on the selected screenshot, and the row
    // must fit beside the sidebar in a small window.
    buttons->addWidget(PanelActions::button(open, QStringLiteral("&Open")));
    buttons->addWidget(PanelActions::button(reveal, QStringLiteral("Re&veal")));
    buttons->addWidget(PanelActions::button(trash, QStringLiteral("Move to &Trash\u2026")));
    buttons->addStretch();
    buttons->addWidget(PanelActions::button(contactSheet));
    for (QAction *action : {refreshAction, diagnostics, guide})
        buttons->addWidget(PanelActions::button(action));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(split, 1);
    layout->addLayout(buttons);

    connect(m_folderWatcher, &QFileSystemWatcher::directoryChanged, this, &ReviewPanel::outputFolderChanged);
    connect(&m_comparisonJob, &QFutureWatcher<Comparison>::finished, this, &ReviewPanel::comparisonReady);
    refreshGroups(); // the gallery may have found its groups before this panel listened
    context.watcher.watch(this, [this] { refresh(); });
}

QWidget *ReviewPanel::comparisonSection()
{
    m_driftedView = pictureLabel(QStringLiteral("Generated"));
    m_referenceView = pictureLabel(QStringLiteral("Recorded reference"));
    m_differenceView = pictureLabel(QStringLiteral("Difference"));
    auto *box = new QGroupBox(QStringLiteral("Drifted from its checkpoint"));
    auto *layout = new QHBoxLayout(box);
    layout->addWidget(captioned(QStringLiteral("Generated"), m_driftedView));
    layout->addWidget(captioned(QStringLiteral("Recorded checkpoint"), m_referenceView));
    layout->addWidget(captioned(QStringLiteral("What differs (red)"), m_differenceView));
    box->setVisible(false);
    m_comparison = box;
    return box;
}

// The run's warnings that nobody has dismissed: one line each, as the run
// log words them. Hidden when there are none.
// Dismiss sits beside the list it acts on, not in the panel's button row.
QWidget *ReviewPanel::warningsSection(QAction *dismiss)
{
    m_warnings = new QListWidget;
    m_warnings->setAccessibleName(QStringLiteral("Localization warnings"));
    m_warnings->setMaximumHeight(110);
    connect(m_warnings, &QListWidget::currentRowChanged, m_actions, &PanelActions::update);
    auto *box = new QGroupBox(QStringLiteral("Localization warnings"));
    auto *layout = new QHBoxLayout(box);
    layout->addWidget(m_warnings, 1);
    layout->addWidget(PanelActions::button(dismiss, QStringLiteral("Dis&miss")), 0, Qt::AlignTop);
    box->setVisible(false);
    m_warningsBox = box;
    return box;
}

void ReviewPanel::refreshWarnings()
{
    const QList<LocalizationWarning> warnings = m_context.model.activeLocalizationWarnings();
    const int row = m_warnings->currentRow();
    const QSignalBlocker blocker(m_warnings);
    m_warnings->clear();
    for (const LocalizationWarning &warning : warnings) {
        auto *item = new QListWidgetItem(warning.text(), m_warnings);
        item->setData(Qt::UserRole, warning.file);
        item->setData(Qt::UserRole + 1, warning.language);
    }
    if (!warnings.isEmpty())
        m_warnings->setCurrentRow(std::clamp(row, 0, int(warnings.size()) - 1));
    m_warningsBox->setVisible(!warnings.isEmpty());
}

void ReviewPanel::dismissSelectedWarning()
{
    if (const QListWidgetItem *item = m_warnings->currentItem())
        m_context.model.dismissLocalizationWarning(item->data(Qt::UserRole).toString(),
                                                   item->data(Qt::UserRole + 1).toString());
}

void ReviewPanel::refresh()
{
    watchOutputFolder();
    refreshWarnings();
    m_gallery->refresh();
    const bool empty = m_gallery->groups().isEmpty();
    m_empty->setVisible(empty);
    m_images->setVisible(!empty);
    m_actions->update();
}

void ReviewPanel::refreshGroups()
{
    const QList<GalleryGroup> &groups = m_gallery->groups();
    const QString current = m_gallery->currentGroup();
    const QSignalBlocker blocker(m_groups);
    m_groups->clear();
    int currentRow = groups.isEmpty() ? -1 : 0;
    for (qsizetype i = 0; i < groups.size(); ++i) {
        const GalleryGroup &group = groups.at(i);
        auto *item = new QListWidgetItem(QStringLiteral("%1 (%2)").arg(group.title).arg(group.images.size()));
        if (group.key == GalleryModel::needsReviewKey)
            item->setForeground(QColor(0xb0, 0x50, 0x00));
        m_groups->addItem(item);
        if (group.key == current)
            currentRow = int(i);
    }
    m_groups->setCurrentRow(currentRow);
    m_gallery->setCurrentGroup(currentRow >= 0 ? groups.at(currentRow).key : QString());
}

void ReviewPanel::showNeedsReview()
{
    const QList<GalleryGroup> &groups = m_gallery->groups();
    if (!groups.isEmpty() && groups.first().key == GalleryModel::needsReviewKey)
        m_groups->setCurrentRow(0);
}

void ReviewPanel::watchOutputFolder()
{
    // The folder itself tells when files come and go in it; its parent tells
    // when the whole folder is deleted or comes back.
    const QString folder = QDir::cleanPath(m_context.model.project().outputDirectory);
    if (folder == m_watchedFolder && (!m_folderWatcher->directories().isEmpty() || !QFileInfo::exists(folder)))
        return;
    if (!m_folderWatcher->directories().isEmpty())
        m_folderWatcher->removePaths(m_folderWatcher->directories());
    m_watchedFolder = folder;
    for (const QString &path : {folder, QFileInfo(folder).absolutePath()})
        if (QFileInfo(path).isDir())
            m_folderWatcher->addPath(path);
}

void ReviewPanel::outputFolderChanged()
{
    if (m_context.busy.run([this] { m_context.model.refreshReviewImages(); }))
        watchOutputFolder();
}

std::optional<ReviewImage> ReviewPanel::selectedImage() const
{
    return m_gallery->image(m_images->currentIndex());
}

void ReviewPanel::selectionChanged()
{
    m_actions->update();
    const std::optional<ReviewImage> image = selectedImage();
    const std::optional<QString> reference = image ? m_context.model.reviewReferenceURL(*image) : std::nullopt;
    if (!image || !reference) {
        m_comparison->setVisible(false);
        m_comparedPath.clear();
        return;
    }
    if (m_comparedPath == image->url)
        return;
    m_comparedPath = image->url;
    m_comparison->setVisible(true);
    for (QLabel *label : {m_driftedView, m_referenceView, m_differenceView})
        label->setText(QStringLiteral("Loading…"));
    // Three pictures from two full-size screenshots: made off the main thread.
    m_comparisonJob.setFuture(QtConcurrent::run(&ReviewPanel::compare, image->url, *reference, comparisonSize));
}

ReviewPanel::Comparison ReviewPanel::compare(const QString &drifted, const QString &reference, QSize size)
{
    Comparison result{readScaled(drifted, size), readScaled(reference, size), {}};
    result.difference = ReviewComparison::highlightDifferences(result.drifted, result.reference, result.drifted.size());
    return result;
}

void ReviewPanel::comparisonReady()
{
    const Comparison result = m_comparisonJob.result();
    const auto show = [](QLabel *label, const QImage &image) {
        if (image.isNull())
            label->setText(QStringLiteral("Cannot be read"));
        else
            label->setPixmap(QPixmap::fromImage(image));
    };
    show(m_driftedView, result.drifted);
    show(m_referenceView, result.reference);
    show(m_differenceView, result.difference);
}

void ReviewPanel::waitForComparison()
{
    m_comparisonJob.waitForFinished();
}

void ReviewPanel::trashSelected()
{
    const std::optional<ReviewImage> image = selectedImage();
    if (!image)
        return;
    if (m_context.dialogs.confirm(this, QStringLiteral("Move to Trash"),
                                  QStringLiteral("Move %1 to the Trash?").arg(image->relativePath),
                                  QStringLiteral("Move to Trash")))
        m_context.model.moveScreenshotToTrash(image->url);
}
