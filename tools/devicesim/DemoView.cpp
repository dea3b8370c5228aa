#include "DemoView.h"

bool DemoDefaults::toggle(const QString &name)
{
    return name == QLatin1String("notifications") || name == QLatin1String("saved:lisbon")
        || name == QLatin1String("saved:kyoto") || name == QLatin1String("saved:marrakesh");
}

bool DemoView::toggle(const QString &name) const
{
    return session.toggles.value(name, DemoDefaults::toggle(name));
}

QString DemoView::currentScreen() const
{
    const QStringList stack = session.stack();
    return stack.isEmpty() ? session.tab : stack.last();
}
