#include "AutoScreenshotNamer.h"

#include "model/Await.h"
#include "model/PathSanitizer.h"

#include <QImage>
#include <QRegularExpression>
#include <QTextBoundaryFinder>
#include <algorithm>

namespace AutoScreenshotNamer {

namespace {

constexpr auto unicode = QRegularExpression::UseUnicodePropertiesOption;

// Characters as a reader counts them (an accented letter or an emoji is one).
qsizetype characterCount(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() > 0)
        ++count;
    return count;
}

bool containsLetter(const QString &text)
{
    const QList<uint> scalars = text.toUcs4();
    return std::any_of(scalars.begin(), scalars.end(), [](uint scalar) { return QChar::isLetter(char32_t(scalar)); });
}

double maxY(const QRectF &box) { return box.y() + box.height(); }

// Line feeds and runs of white space become single blanks; the ends stay.
QString collapsedWhiteSpace(const QString &text)
{
    static const QRegularExpression whiteSpace(QStringLiteral("\\s+"), unicode);
    QString result = text;
    result.replace(QLatin1Char('\n'), QLatin1Char(' '));
    result.replace(whiteSpace, QStringLiteral(" "));
    return result;
}

} // namespace

const QStringList &blockedTexts()
{
    static const QStringList texts{
        QStringLiteral("done"), QStringLiteral("cancel"), QStringLiteral("back"),
        QStringLiteral("close"), QStringLiteral("next"), QStringLiteral("skip"),
        QStringLiteral("continue"), QStringLiteral("copy"), QStringLiteral("files"),
        QStringLiteral("save"), QStringLiteral("save to photos"), QStringLiteral("share"),
        QStringLiteral("share png"), QStringLiteral("small"), QStringLiteral("medium"),
        QStringLiteral("large"), QStringLiteral("wifi"), QStringLiteral("wi-fi"),
    };
    return texts;
}

const QStringList &blockedButtonTexts()
{
    // Every one of these is also blocked outright, so the penalty never
    // touches a usable line; it stays as a second line of defence.
    static const QStringList texts{
        QStringLiteral("done"), QStringLiteral("cancel"), QStringLiteral("back"),
        QStringLiteral("next"), QStringLiteral("skip"), QStringLiteral("continue"),
        QStringLiteral("share"), QStringLiteral("copy"), QStringLiteral("files"),
    };
    return texts;
}

QString normalizedText(const QString &text)
{
    return collapsedWhiteSpace(text).trimmed();
}

bool Candidate::isUsable() const
{
    static const QRegularExpression clockTime(QStringLiteral("^\\d{1,2}:\\d{2}$"), unicode);
    static const QRegularExpression numbersOnly(QStringLiteral("^[\\d\\s.,%]+$"), unicode);
    const QString t = normalizedText(text);
    const qsizetype length = characterCount(t);
    if (length < 2 || length >= 45)
        return false;
    if (blockedTexts().contains(t.toLower()))
        return false;
    if (clockTime.match(t).hasMatch() || numbersOnly.match(t).hasMatch())
        return false;
    return containsLetter(t);
}

double Candidate::score() const
{
    const double top = maxY(box);
    const double midX = box.x() + box.width() / 2.0;
    double result = std::clamp(top, 0.0, 1.0) + std::clamp(8.0 * box.height(), 0.0, 2.0)
                    - 0.35 * std::abs(midX - 0.5);
    if (top > 0.94) // the status bar
        result -= 1.2;
    if (blockedButtonTexts().contains(normalizedText(text).toLower()))
        result -= 0.5;
    return result;
}

std::optional<QString> suggestName(const QList<Candidate> &candidates)
{
    QList<Candidate> usable;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(usable),
                 [](const Candidate &c) { return c.isUsable(); });
    if (usable.isEmpty())
        return std::nullopt;
    std::stable_sort(usable.begin(), usable.end(),
                     [](const Candidate &a, const Candidate &b) { return a.score() > b.score(); });
    // Not trimmed: the sanitizer drops what is left at either end.
    return PathSanitizer::component(collapsedWhiteSpace(usable.first().text).toLower());
}

std::optional<QString> suggestName(const QString &imagePath, PlatformServices &platform)
{
    return awaitBackground([imagePath, &platform]() -> std::optional<QString> {
        const QImage image(imagePath);
        if (image.isNull())
            return std::nullopt;
        QList<Candidate> candidates;
        for (const RecognizedTextLine &line : platform.recognizeText(image))
            candidates.append({line.text, line.boundingBox});
        return suggestName(candidates);
    });
}

} // namespace AutoScreenshotNamer
