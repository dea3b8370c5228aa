#include "AppLauncher.h"

#include "AppBundle.h"
#include "DemoApp.h"

namespace {

// "(de-DE)", "(\"pt-BR\", en)" or "de-DE" -> the first language in it.
QString firstLanguage(QString value)
{
    value = value.trimmed();
    if (value.startsWith(QLatin1Char('(')))
        value = value.mid(1);
    if (value.endsWith(QLatin1Char(')')))
        value.chop(1);
    QString first = value.section(QLatin1Char(','), 0, 0).trimmed();
    first.remove(QLatin1Char('"'));
    return first;
}

} // namespace

LaunchRequest LaunchRequest::fromArguments(const QStringList &arguments)
{
    LaunchRequest request;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &a = arguments[i];
        if (a == QLatin1String("-AppleLanguages") && i + 1 < arguments.size()) {
            const QString language = firstLanguage(arguments[++i]);
            if (!language.isEmpty())
                request.language = language;
        } else if (a == QLatin1String("-AppleLocale") && i + 1 < arguments.size()) {
            request.locale = arguments[++i].trimmed();
        } else {
            request.extraArguments.append(a);
        }
    }
    return request;
}

namespace AppLauncher {

AppSession &start(World &world, Device &device, const QString &bundleId, const LaunchRequest &request)
{
    if (AppSession *running = device.session(bundleId); running && !request.terminateRunning) {
        device.foregroundApp = bundleId;
        return *running;
    }
    device.stopApp(bundleId);
    AppSession session;
    session.bundleId = bundleId;
    session.pid = world.nextPid++;
    session.language = request.language;
    session.locale = request.locale.isEmpty() ? QString(request.language).replace(QLatin1Char('-'), QLatin1Char('_'))
                                              : request.locale;
    session.extraArguments = request.extraArguments;
    DemoApp::reset(session);
    DemoApp::applyLaunchState(session);
    device.running.append(session);
    device.foregroundApp = bundleId;
    return device.running.last();
}

} // namespace AppLauncher
