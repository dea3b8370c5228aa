#include "DemoApp.h"

#include "DemoChrome.h"
#include "DemoScreens.h"
#include "DemoStrings.h"
#include "DemoTrips.h"

namespace DemoApp {

namespace {

const QStringList tabs = {QStringLiteral("trips"), QStringLiteral("explore"), QStringLiteral("saved"),
                          QStringLiteral("settings")};

void drawScreen(Canvas &c, const DemoView &view)
{
    const QString screen = view.currentScreen();
    if (screen.startsWith(QLatin1String("detail:"))) {
        if (const DemoTrip *trip = DemoTrips::find(screen.section(QLatin1Char(':'), 1)))
            return DemoScreens::detail(c, view, *trip);
    }
    if (screen == QLatin1String("explore"))
        DemoScreens::explore(c, view);
    else if (screen == QLatin1String("saved"))
        DemoScreens::saved(c, view);
    else if (screen == QLatin1String("settings"))
        DemoScreens::settings(c, view);
    else
        DemoScreens::trips(c, view);
}

void typeKey(AppSession &s, const QString &key)
{
    if (key == QLatin1String("delete"))
        s.searchText.chop(1);
    else if (key == QLatin1String("space"))
        s.searchText.append(QLatin1Char(' '));
    else if (key == QLatin1String("return"))
        s.searchFocused = false;
    else
        s.searchText.append(key);
}

void perform(AppSession &s, const QString &action)
{
    const QString verb = action.section(QLatin1Char(':'), 0, 0);
    const QString argument = action.section(QLatin1Char(':'), 1);
    if (verb == QLatin1String("push")) {
        s.searchFocused = false;
        s.stack().append(argument);
    } else if (verb == QLatin1String("back")) {
        if (!s.stack().isEmpty())
            s.stack().removeLast();
    } else if (verb == QLatin1String("tab")) {
        if (s.tab == argument)
            s.stack().clear(); // tapping the current tab returns to its root
        s.tab = argument;
        s.searchFocused = false;
    } else if (verb == QLatin1String("focus-search")) {
        s.searchFocused = true;
    } else if (verb == QLatin1String("cancel-search")) {
        s.searchFocused = false;
        s.searchText.clear();
    } else if (verb == QLatin1String("clear-search")) {
        s.searchText.clear();
    } else if (verb == QLatin1String("category")) {
        const QByteArray key = "category." + argument.toLatin1();
        s.searchText = DemoStrings::text(DemoStrings::language(s.language), key.constData());
        s.searchFocused = false;
    } else if (verb == QLatin1String("toggle")) {
        s.toggles[argument] = !s.toggles.value(argument, DemoDefaults::toggle(argument));
    } else if (verb == QLatin1String("key")) {
        typeKey(s, argument);
    }
}

Canvas layout(const AppSession &session, const ScreenGeometry &geometry)
{
    Canvas c(nullptr, geometry);
    draw(c, session, false);
    return c;
}

} // namespace

QString screenId(const AppSession &session)
{
    return DemoView(session).currentScreen().section(QLatin1Char(':'), 0, 0);
}

bool prefersLightStatusBar(const AppSession &session)
{
    return screenId(session) == QLatin1String("detail");
}

void draw(Canvas &c, const AppSession &session, bool covered)
{
    const DemoView view(session);
    drawScreen(c, view);
    if (screenId(session) != QLatin1String("detail"))
        DemoChrome::tabBar(c, view);
    if (session.searchFocused && screenId(session) == QLatin1String("explore"))
        DemoChrome::keyboard(c, view);
    if (covered)
        DemoChrome::premiumSheet(c, view);
}

void tap(AppSession &session, const ScreenGeometry &geometry, const QPointF &point)
{
    const QString action = layout(session, geometry).actionAt(point);
    if (!action.isEmpty())
        perform(session, action);
    else if (session.searchFocused && screenId(session) == QLatin1String("explore"))
        session.searchFocused = false; // a tap elsewhere dismisses the keyboard
}

void swipe(AppSession &session, const ScreenGeometry &geometry, const QPointF &from, const QPointF &to)
{
    const QPointF delta = to - from;
    const bool horizontal = std::abs(delta.x()) > std::abs(delta.y());
    if (horizontal) {
        // The interactive pop gesture: a drag from the left edge goes back.
        if (from.x() <= 30 && delta.x() > geometry.width * 0.25 && !session.stack().isEmpty())
            session.stack().removeLast();
        return;
    }
    const Canvas c = layout(session, geometry);
    if (const ScrollArea *area = c.scrollAreaAt(from)) {
        const double offset = session.scroll.value(area->key) - delta.y();
        session.scroll[area->key] = qBound(0.0, offset, area->maximumOffset());
    }
}

std::optional<QString> type(AppSession &session, const QString &text)
{
    if (!session.searchFocused || screenId(session) != QLatin1String("explore"))
        return QStringLiteral("Neither element nor any descendant has keyboard focus.");
    for (const QChar ch : text) {
        if (!session.searchFocused)
            break;
        if (ch == QLatin1Char('\n'))
            session.searchFocused = false;
        else if (ch == QChar(0x08)) // the delete key
            session.searchText.chop(1);
        else
            session.searchText.append(ch);
    }
    return std::nullopt;
}

void reset(AppSession &session)
{
    session.tab = tabs.first();
    session.stacks.clear();
    session.scroll.clear();
    session.toggles.clear();
    session.searchFocused = false;
    session.searchText.clear();
}

void applyLaunchState(AppSession &session)
{
    const QStringList &arguments = session.extraArguments;
    const auto value = [&arguments](const char *name) {
        const qsizetype at = arguments.lastIndexOf(QLatin1String(name));
        return at >= 0 ? arguments.value(at + 1).trimmed() : QString();
    };
    const QString screen = value("-vantrel.screen");
    const QString trip = screen.startsWith(QLatin1String("detail:")) ? screen.mid(7) : screen;
    if (tabs.contains(screen))
        session.tab = screen;
    else if (DemoTrips::find(trip))
        session.stack().append(QStringLiteral("detail:") + trip);
    const QString sample = value("-vantrel.sample");
    if (!sample.isEmpty())
        session.searchText = sample;
}

} // namespace DemoApp
