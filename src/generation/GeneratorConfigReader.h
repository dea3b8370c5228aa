#pragma once
// Reads a generator configuration: exactly the text the configuration writer
// produces, and any hand-edited equivalent (other quoting, flow-style lists,
// keys in another order, optional keys left out). What the file cannot mean
// is refused with its place in the file: a syntax error, a value of the
// wrong type, an unknown or repeated key, a missing key, an empty list where
// the run needs at least one entry.
//
// Optional keys and their values when left out: openSimulator and
// resetAppData true, launchWaitSeconds 2.0, launchArguments none; in a
// screen launchArguments none, launchWaitSeconds 0 (the configuration's
// wait), operations none.

#include "GeneratorConfig.h"

#include <QByteArray>
#include <variant>

namespace GeneratorConfigReader {

// A pure function of the text: no file system, no devices. `fileName` only
// names the file in the refusal.
std::variant<GeneratorConfig, ConfigRefusal> read(const QByteArray &text, const QString &fileName);

} // namespace GeneratorConfigReader
