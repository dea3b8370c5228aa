#pragma once
// The readers of outside data, fed whatever bytes a fuzzer makes: the
// project decoder, the snapshot and library readers, the reorder journal,
// the installed-apps parser, the device-list decoder and the generator
// configuration reader. Each input must end
// in a result or a clear error, never in a crash, a hang or a write outside
// the scratch folder.

#include <QByteArray>
#include <QList>

namespace FuzzInputs {

// The first byte picks the reader; the rest is its input.
void feed(const QByteArray &data);

// Well-formed examples of every reader's input, tagged with that first
// byte, from which mutations start.
QList<QByteArray> seeds();

} // namespace FuzzInputs
