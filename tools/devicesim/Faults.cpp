#include "Faults.h"

#include <QJsonArray>

namespace LanguageMatch {

static QString canonical(QString code)
{
    return code.trimmed().replace(QLatin1Char('_'), QLatin1Char('-')).toLower();
}

bool matches(const QString &requested, const QString &language)
{
    const QString a = canonical(requested);
    const QString b = canonical(language);
    if (a.isEmpty())
        return false;
    return a == b || (!a.contains(QLatin1Char('-')) && b.section(QLatin1Char('-'), 0, 0) == a);
}

} // namespace LanguageMatch

bool Faults::isAppMissing(const QString &udid, const QString &bundleId) const
{
    for (const MissingApp &m : missingApps)
        if (m.udid.compare(udid, Qt::CaseInsensitive) == 0 && m.bundleId == bundleId)
            return true;
    return false;
}

bool Faults::launchFails(const QString &language) const
{
    for (const QString &l : launchFailLanguages)
        if (LanguageMatch::matches(l, language))
            return true;
    return false;
}

bool Faults::hasDialog(const QString &language, const QString &screen) const
{
    for (const Dialog &d : dialogs)
        if (LanguageMatch::matches(d.language, language) && d.screen == screen)
            return true;
    return false;
}

bool Faults::isEmpty() const
{
    return missingApps.isEmpty() && launchFailLanguages.isEmpty() && dialogs.isEmpty() && !buildFails
        && slowBuildSeconds <= 0 && !noXcode && hangingSubcommands.isEmpty() && chattySubcommands.isEmpty()
        && !noScreenshots && !openFails;
}

QJsonObject Faults::toJson() const
{
    QJsonArray missing;
    for (const MissingApp &m : missingApps)
        missing.append(QJsonObject{{QStringLiteral("udid"), m.udid}, {QStringLiteral("bundleId"), m.bundleId}});
    QJsonArray dialogList;
    for (const Dialog &d : dialogs)
        dialogList.append(QJsonObject{{QStringLiteral("language"), d.language}, {QStringLiteral("screen"), d.screen}});
    return QJsonObject{
        {QStringLiteral("appMissing"), missing},
        {QStringLiteral("launchFails"), QJsonArray::fromStringList(launchFailLanguages)},
        {QStringLiteral("dialogs"), dialogList},
        {QStringLiteral("buildFails"), buildFails},
        {QStringLiteral("slowBuildSeconds"), slowBuildSeconds},
        {QStringLiteral("noXcode"), noXcode},
        {QStringLiteral("simctlHangs"), QJsonArray::fromStringList(hangingSubcommands)},
        {QStringLiteral("chattyStderr"), QJsonArray::fromStringList(chattySubcommands)},
        {QStringLiteral("noScreenshots"), noScreenshots},
        {QStringLiteral("openFails"), openFails},
    };
}

Faults Faults::fromJson(const QJsonObject &o)
{
    Faults f;
    for (const QJsonValue &v : o.value(QStringLiteral("appMissing")).toArray())
        f.missingApps.append({v[QStringLiteral("udid")].toString(), v[QStringLiteral("bundleId")].toString()});
    for (const QJsonValue &v : o.value(QStringLiteral("launchFails")).toArray())
        f.launchFailLanguages.append(v.toString());
    for (const QJsonValue &v : o.value(QStringLiteral("dialogs")).toArray())
        f.dialogs.append({v[QStringLiteral("language")].toString(), v[QStringLiteral("screen")].toString()});
    f.buildFails = o.value(QStringLiteral("buildFails")).toBool();
    f.slowBuildSeconds = o.value(QStringLiteral("slowBuildSeconds")).toDouble();
    f.noXcode = o.value(QStringLiteral("noXcode")).toBool();
    for (const QJsonValue &v : o.value(QStringLiteral("simctlHangs")).toArray())
        f.hangingSubcommands.append(v.toString());
    for (const QJsonValue &v : o.value(QStringLiteral("chattyStderr")).toArray())
        f.chattySubcommands.append(v.toString());
    f.noScreenshots = o.value(QStringLiteral("noScreenshots")).toBool();
    f.openFails = o.value(QStringLiteral("openFails")).toBool();
    return f;
}

QStringList Faults::describe() const
{
    QStringList lines;
    for (const MissingApp &m : missingApps)
        lines.append(QStringLiteral("app-missing %1 %2").arg(m.udid, m.bundleId));
    for (const QString &l : launchFailLanguages)
        lines.append(QStringLiteral("launch-fails %1").arg(l));
    for (const Dialog &d : dialogs)
        lines.append(QStringLiteral("dialog %1 %2").arg(d.language, d.screen));
    if (buildFails)
        lines.append(QStringLiteral("build-fails"));
    if (slowBuildSeconds > 0)
        lines.append(QStringLiteral("slow-build %1").arg(slowBuildSeconds));
    if (noXcode)
        lines.append(QStringLiteral("no-xcode"));
    for (const QString &subcommand : hangingSubcommands)
        lines.append(QStringLiteral("simctl-hangs %1").arg(subcommand));
    for (const QString &subcommand : chattySubcommands)
        lines.append(QStringLiteral("chatty-stderr %1").arg(subcommand));
    if (noScreenshots)
        lines.append(QStringLiteral("no-screenshots"));
    if (openFails)
        lines.append(QStringLiteral("open-fails"));
    return lines;
}

namespace {

const QStringList demoScreens = {QStringLiteral("trips"), QStringLiteral("detail"), QStringLiteral("explore"),
                                 QStringLiteral("saved"), QStringLiteral("settings")};

QString faultUsage(const QString &kind)
{
    return QStringLiteral("devicesim: wrong arguments for fault %1 (see devicesim --help)").arg(kind);
}

} // namespace

QString Faults::set(const QStringList &args, const QString &defaultBundleId)
{
    const QString kind = args.value(0);
    const QStringList rest = args.mid(1);
    if (kind == QLatin1String("app-missing")) {
        if (rest.isEmpty() || rest.size() > 2)
            return faultUsage(kind);
        missingApps.append({rest[0], rest.value(1, defaultBundleId)});
    } else if (kind == QLatin1String("launch-fails")) {
        if (rest.size() != 1)
            return faultUsage(kind);
        launchFailLanguages.append(rest[0]);
    } else if (kind == QLatin1String("dialog")) {
        if (rest.size() != 2)
            return faultUsage(kind);
        if (!demoScreens.contains(rest[1]))
            return QStringLiteral("devicesim: unknown screen \"%1\"; the demo app has %2")
                .arg(rest[1], demoScreens.join(QStringLiteral(", ")));
        dialogs.append({rest[0], rest[1]});
    } else if (kind == QLatin1String("build-fails")) {
        if (!rest.isEmpty())
            return faultUsage(kind);
        buildFails = true;
    } else if (kind == QLatin1String("slow-build")) {
        bool ok = false;
        const double seconds = rest.value(0).toDouble(&ok);
        if (rest.size() != 1 || !ok || seconds <= 0)
            return faultUsage(kind);
        slowBuildSeconds = seconds;
    } else if (kind == QLatin1String("no-xcode")) {
        if (!rest.isEmpty())
            return faultUsage(kind);
        noXcode = true;
    } else if (kind == QLatin1String("simctl-hangs")) {
        if (rest.size() != 1)
            return faultUsage(kind);
        hangingSubcommands.append(rest[0]);
    } else if (kind == QLatin1String("chatty-stderr")) {
        if (rest.size() != 1)
            return faultUsage(kind);
        chattySubcommands.append(rest[0]);
    } else if (kind == QLatin1String("no-screenshots")) {
        if (!rest.isEmpty())
            return faultUsage(kind);
        noScreenshots = true;
    } else if (kind == QLatin1String("open-fails")) {
        if (!rest.isEmpty())
            return faultUsage(kind);
        openFails = true;
    } else {
        return QStringLiteral("devicesim: unknown fault \"%1\"").arg(kind);
    }
    return {};
}

QString Faults::clear(const QString &kind)
{
    if (kind.isEmpty())
        *this = Faults();
    else if (kind == QLatin1String("app-missing"))
        missingApps.clear();
    else if (kind == QLatin1String("launch-fails"))
        launchFailLanguages.clear();
    else if (kind == QLatin1String("dialog"))
        dialogs.clear();
    else if (kind == QLatin1String("build-fails"))
        buildFails = false;
    else if (kind == QLatin1String("slow-build"))
        slowBuildSeconds = 0;
    else if (kind == QLatin1String("no-xcode"))
        noXcode = false;
    else if (kind == QLatin1String("simctl-hangs"))
        hangingSubcommands.clear();
    else if (kind == QLatin1String("chatty-stderr"))
        chattySubcommands.clear();
    else if (kind == QLatin1String("no-screenshots"))
        noScreenshots = false;
    else if (kind == QLatin1String("open-fails"))
        openFails = false;
    else
        return QStringLiteral("devicesim: unknown fault \"%1\"").arg(kind);
    return {};
}
