#include "Typography.h"

#include <QFile>
#include <QFontDatabase>
#include <QStringList>

namespace Typography {

namespace {

QString &family()
{
    static QString name = QStringLiteral("DejaVu Sans");
    return name;
}

} // namespace

void load()
{
    static bool loaded = false;
    if (loaded)
        return;
    loaded = true;
    const QStringList folders = {QStringLiteral("/usr/share/fonts/truetype/dejavu"),
                                 QStringLiteral("/usr/share/fonts/dejavu"),
                                 QStringLiteral("/usr/local/share/fonts"),
                                 QStringLiteral("/opt/homebrew/share/fonts")};
    // The condensed cut is close to the platform font's width, so that
    // titles such as "Einstellungen" fit where they fit on a real device.
    for (const QString &folder : folders) {
        const QString regular = folder + QStringLiteral("/DejaVuSansCondensed.ttf");
        if (!QFile::exists(regular))
            continue;
        const int id = QFontDatabase::addApplicationFont(regular);
        QFontDatabase::addApplicationFont(folder + QStringLiteral("/DejaVuSansCondensed-Bold.ttf"));
        const QStringList families = QFontDatabase::applicationFontFamilies(id);
        for (const QString &name : families)
            family() = name; // the file names its condensed family last
        return;
    }
}

QFont font(double size, bool bold)
{
    load();
    QFont f(family());
    f.setPixelSize(qMax(1, qRound(size)));
    f.setWeight(bold ? QFont::Bold : QFont::Normal);
    f.setStretch(family().contains(QLatin1String("Condensed")) ? QFont::Unstretched : QFont::SemiCondensed);
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

} // namespace Typography
