#include "GalleryModel.h"

#include "ThumbnailLoader.h"
#include "model/AppModel.h"

#include <QFileInfo>
#include "simulator/CodePointOrder.h"

#include <map>

GalleryModel::GalleryModel(const AppModel &model, ThumbnailLoader &thumbnails, QObject *parent)
    : QAbstractListModel(parent), m_model(model), m_thumbnails(thumbnails)
{
    connect(&m_thumbnails, &ThumbnailLoader::ready, this, &GalleryModel::thumbnailReady);
    refresh();
}

QList<GalleryGroup> GalleryModel::makeGroups() const
{
    QList<GalleryGroup> groups;
    const QList<ReviewImage> needsReview = m_model.needsReviewImages();
    if (!needsReview.isEmpty())
        groups.append({needsReviewKey, QStringLiteral("Needs review"), needsReview});
    // Within a language card, one group per device folder, in plain order.
    for (const GeneratedLanguageGroup &language : m_model.groupedImages()) {
        std::map<QString, QList<ReviewImage>, CodePointOrder::Less> byDevice; // as the language cards sort
        for (const ReviewImage &image : language.images) {
            const QStringList parts = image.relativePath.split(QLatin1Char('/'), Qt::SkipEmptyParts);
            byDevice[parts.size() >= 3 ? parts.at(1) : QString()].append(image);
        }
        for (const auto &[device, images] : byDevice) {
            const QString key = device.isEmpty() ? language.language : language.language + QLatin1Char('/') + device;
            const QString title = device.isEmpty() ? language.language
                                                   : language.language + QStringLiteral(" \u00B7 ") + device;
            groups.append({key, title, images});
        }
    }
    return groups;
}

void GalleryModel::refresh()
{
    const QList<GalleryGroup> groups = makeGroups();
    if (groups == m_groups)
        return;
    m_groups = groups;
    emit groupsChanged();
    setCurrentGroup(m_currentGroup);
}

void GalleryModel::setCurrentGroup(const QString &key)
{
    QList<ReviewImage> shown;
    for (const GalleryGroup &group : std::as_const(m_groups))
        if (group.key == key)
            shown = group.images;
    if (key == m_currentGroup && shown == m_shown)
        return;
    beginResetModel();
    m_currentGroup = key;
    m_shown = shown;
    endResetModel();
}

std::optional<ReviewImage> GalleryModel::image(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_shown.size())
        return std::nullopt;
    return m_shown.at(index.row());
}

void GalleryModel::thumbnailReady(const QString &path)
{
    for (qsizetype i = 0; i < m_shown.size(); ++i)
        if (m_shown.at(i).url == path)
            emit dataChanged(index(int(i)), index(int(i)), {Qt::DecorationRole});
}

int GalleryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

QVariant GalleryModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ReviewImage &image = m_shown.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return QFileInfo(image.url).fileName();
    case Qt::DecorationRole:
        if (const std::optional<QPixmap> thumbnail = m_thumbnails.thumbnail(image.url))
            return *thumbnail;
        return {};
    case Qt::SizeHintRole:
        return m_thumbnails.cellSize();
    case Qt::ToolTipRole:
        return image.note.isEmpty() ? image.relativePath : image.relativePath + QLatin1Char('\n') + image.note;
    case RelativePathRole:
        return image.relativePath;
    case PathRole:
        return image.url;
    case NeedsReviewRole:
        return image.relativePath.startsWith(needsReviewKey + QLatin1Char('/'));
    default:
        return {};
    }
}
