#pragma once
// `open`: only what the product asks of it, bringing the Simulator app to a
// device (open -a Simulator --args -CurrentDeviceUDID <udid>), and opening
// files, which a stand-in has nowhere to show.

#include <QStringList>

namespace OpenCommand {
int run(const QStringList &arguments);
}
