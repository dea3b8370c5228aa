#pragma once
// The review gallery: the generated screenshots in groups of one language
// and device, those held back for review ("_needs-review") first. The view
// shows one group at a time; thumbnails arrive as they are decoded.

#include "app/ReviewImage.h"

#include <QAbstractListModel>

class AppModel;
class ThumbnailLoader;

struct GalleryGroup
{
    QString key;   // "_needs-review", or "de-DE/iPhone 15 Pro"
    QString title; // "Needs review", or "de-DE · iPhone 15 Pro"
    QList<ReviewImage> images;
    bool operator==(const GalleryGroup &) const = default;
};

class GalleryModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { PathRole = Qt::UserRole + 1, RelativePathRole, NeedsReviewRole };

    static inline const QString needsReviewKey = QStringLiteral("_needs-review");

    GalleryModel(const AppModel &model, ThumbnailLoader &thumbnails, QObject *parent = nullptr);

    void refresh();
    const QList<GalleryGroup> &groups() const { return m_groups; }
    QString currentGroup() const { return m_currentGroup; }
    // Shows the images of one group; an unknown key shows none.
    void setCurrentGroup(const QString &key);
    std::optional<ReviewImage> image(const QModelIndex &index) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

signals:
    void groupsChanged();

private:
    QList<GalleryGroup> makeGroups() const;
    void thumbnailReady(const QString &path);

    const AppModel &m_model;
    ThumbnailLoader &m_thumbnails;
    QList<GalleryGroup> m_groups;
    QString m_currentGroup;
    QList<ReviewImage> m_shown;
};
