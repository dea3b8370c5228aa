#pragma once
// The contact sheet: one self-contained HTML page ("index.html" in the
// output folder) that shows every screenshot of a run at a glance, per
// device a grid of checkpoints (rows) by languages (columns). Small
// thumbnails beside the page link to the full pictures; drifted, missing and
// possibly unlocalized screenshots are marked. Inline CSS only: no scripts,
// nothing fetched from the network.

#include <QList>
#include <QString>
#include <QStringList>

namespace ContactSheet {

enum class CellState { generated, drifted, missing };

struct Cell
{
    CellState state = CellState::missing;
    QString image;     // path of the full picture relative to the page; empty when missing
    QString thumbnail; // path of its thumbnail relative to the page; empty when missing
    // The localization warning of this cell, or empty.
    QString warning;
    bool warningDismissed = false;
};

struct DeviceGrid
{
    QString deviceName;
    QStringList checkpoints; // file names, the rows
    QStringList languages;   // the columns
    QList<QList<Cell>> cells; // [row][column]
};

struct Page
{
    QString projectName;
    QString runDate; // as shown; empty when nothing was generated
    QList<DeviceGrid> devices;
};

struct Counts
{
    qsizetype screenshots = 0; // generated and drifted
    qsizetype drifted = 0;
    qsizetype missing = 0;
    qsizetype warnings = 0; // not dismissed
};

QString pageFileName();         // "index.html"
QString thumbnailsFolderName(); // ".thumbnails": hidden, so the gallery never lists it
constexpr int thumbnailWidth = 180;

Counts counts(const Page &page);
// The whole page; every name in it is escaped, every link percent-encoded.
QString html(const Page &page);

// Shrinks `source` to thumbnailWidth into `destination` (JPEG), unless the
// thumbnail is already newer than the source. False when it cannot be made.
bool makeThumbnail(const QString &source, const QString &destination);

} // namespace ContactSheet
