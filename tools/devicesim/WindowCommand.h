#pragma once
// `devicesim window [UDID]`: the stand-in's live "Simulator" window on an
// X11 display, and what `open -a Simulator` does with it.

#include <QString>
#include <QStringList>

namespace WindowCommand {

// Whether this invocation shows the window; it must then be told before
// the application object exists, since windows need the X11 platform.
bool isRequested(const QString &personality, int argc, char **argv);
void prepareApplication();

int run(const QStringList &arguments);

// Shows the window in a process of its own, unless there is no display or
// the window of this state folder is open already.
void openDetached();

} // namespace WindowCommand
