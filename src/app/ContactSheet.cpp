#include "ContactSheet.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QImage>
#include <QSaveFile>
#include <QUrl>

namespace ContactSheet {

namespace {

QString escaped(const QString &text) { return text.toHtmlEscaped(); }

// A relative link: each path component percent-encoded, so names with
// blanks, "#", "?" or non-ASCII letters still reach their file.
QString href(const QString &relativePath)
{
    QStringList parts;
    for (const QString &part : relativePath.split(QLatin1Char('/')))
        parts.append(QString::fromLatin1(QUrl::toPercentEncoding(part)));
    return parts.join(QLatin1Char('/'));
}

const char *style = R"(body{font-family:-apple-system,"Segoe UI",sans-serif;margin:24px;color:#222;background:#fafafa}
h1{margin:0 0 4px}
.summary{margin:0 0 24px;color:#555}
table.grid{border-collapse:collapse;margin:0 0 32px}
.grid th,.grid td{border:1px solid #ccc;padding:6px;vertical-align:top;text-align:center;background:#fff}
.grid th.checkpoint{text-align:left;font-weight:normal;max-width:180px;word-break:break-all}
.grid img{display:block;width:180px;height:auto;margin:0 auto}
.grid td.drifted{background:#fde2cf;outline:3px solid #e8710a;outline-offset:-7px}
.grid td.missing{background:#eee;color:#a00;height:120px;width:180px}
.grid td.warned{outline:3px dashed #c5221f;outline-offset:-7px}
.mark{display:block;font-size:12px;margin-top:4px;font-weight:bold}
.drifted .mark{color:#b45309}
.warned .mark.localization{color:#c5221f}
.dismissed{color:#777;font-weight:normal}
)";

QString cellHtml(const Cell &cell)
{
    QStringList classes;
    QString body;
    switch (cell.state) {
    case CellState::missing:
        classes.append(QStringLiteral("missing"));
        body = QStringLiteral("<span class=\"mark\">missing</span>");
        break;
    case CellState::drifted:
        classes.append(QStringLiteral("drifted"));
        [[fallthrough]];
    case CellState::generated:
        body = QStringLiteral("<a href=\"%1\"><img src=\"%2\" alt=\"%3\" loading=\"lazy\"></a>")
                   .arg(href(cell.image), href(cell.thumbnail), escaped(QFileInfo(cell.image).fileName()));
        if (cell.state == CellState::drifted)
            body += QStringLiteral("<span class=\"mark\">drifted: in _needs-review</span>");
        break;
    }
    if (!cell.warning.isEmpty()) {
        if (!cell.warningDismissed)
            classes.append(QStringLiteral("warned"));
        body += QStringLiteral("<span class=\"mark localization%1\" title=\"%2\">%3</span>")
                    .arg(cell.warningDismissed ? QStringLiteral(" dismissed") : QString(), escaped(cell.warning),
                         cell.warningDismissed ? QStringLiteral("same words as first language (dismissed)")
                                               : QStringLiteral("same words as first language"));
    }
    const QString classAttribute =
        classes.isEmpty() ? QString() : QStringLiteral(" class=\"%1\"").arg(classes.join(QLatin1Char(' ')));
    return QStringLiteral("<td%1>%2</td>").arg(classAttribute, body);
}

} // namespace

QString pageFileName() { return QStringLiteral("index.html"); }
QString thumbnailsFolderName() { return QStringLiteral(".thumbnails"); }

Counts counts(const Page &page)
{
    Counts result;
    for (const DeviceGrid &device : page.devices)
        for (const QList<Cell> &row : device.cells)
            for (const Cell &cell : row) {
                if (cell.state == CellState::missing)
                    ++result.missing;
                else
                    ++result.screenshots;
                if (cell.state == CellState::drifted)
                    ++result.drifted;
                if (!cell.warning.isEmpty() && !cell.warningDismissed)
                    ++result.warnings;
            }
    return result;
}

QString html(const Page &page)
{
    const Counts total = counts(page);
    QString out;
    out += QStringLiteral("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">\n<title>%1</title>\n<style>\n")
               .arg(escaped(page.projectName));
    out += QString::fromUtf8(style);
    out += QStringLiteral("</style></head>\n<body>\n<h1>%1</h1>\n").arg(escaped(page.projectName));
    out += QStringLiteral("<p class=\"summary\">Run: %1 &middot; %2 screenshots &middot; %3 drifted &middot; "
                          "%4 missing &middot; %5 localization warnings</p>\n")
               .arg(page.runDate.isEmpty() ? QStringLiteral("none yet") : escaped(page.runDate))
               .arg(total.screenshots)
               .arg(total.drifted)
               .arg(total.missing)
               .arg(total.warnings);
    for (const DeviceGrid &device : page.devices) {
        out += QStringLiteral("<h2>%1</h2>\n<table class=\"grid\">\n<tr><th></th>").arg(escaped(device.deviceName));
        for (const QString &language : device.languages)
            out += QStringLiteral("<th>%1</th>").arg(escaped(language));
        out += QStringLiteral("</tr>\n");
        for (qsizetype row = 0; row < device.checkpoints.size(); ++row) {
            out += QStringLiteral("<tr><th class=\"checkpoint\">%1</th>").arg(escaped(device.checkpoints.at(row)));
            for (const Cell &cell : device.cells.value(row))
                out += cellHtml(cell);
            out += QStringLiteral("</tr>\n");
        }
        out += QStringLiteral("</table>\n");
    }
    out += QStringLiteral("</body></html>\n");
    return out;
}

bool makeThumbnail(const QString &source, const QString &destination)
{
    const QFileInfo sourceInfo(source);
    const QFileInfo thumbnailInfo(destination);
    if (thumbnailInfo.exists() && thumbnailInfo.lastModified() >= sourceInfo.lastModified())
        return true;
    QImageReader reader(source);
    const QSize size = reader.size();
    if (size.isValid() && size.width() > thumbnailWidth)
        reader.setScaledSize(QSize(thumbnailWidth, qMax(1, size.height() * thumbnailWidth / size.width())));
    QImage image = reader.read();
    if (image.isNull())
        return false;
    if (image.width() > thumbnailWidth)
        image = image.scaledToWidth(thumbnailWidth, Qt::SmoothTransformation);
    if (!QDir().mkpath(thumbnailInfo.absolutePath()))
        return false;
    // Written under a hidden name and renamed into place, so a page never
    // shows half a thumbnail.
    QSaveFile file(destination);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (!image.convertToFormat(QImage::Format_RGB32).save(&file, "JPG", 80))
        return false;
    return file.commit();
}

} // namespace ContactSheet
