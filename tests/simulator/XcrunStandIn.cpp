#include "XcrunStandIn.h"

#include "TestSupport.h"

#include <QFile>

namespace {

// Arguments are logged separated by the unit separator, one call a line.
const char *script = R"sh(#!/bin/sh
dir='%1'
for argument in "$@"; do printf '%s\037' "$argument"; done >> "$dir/calls.log"
printf '\n' >> "$dir/calls.log"
key="$2"
if [ "$2" = io ]; then key="io-$4"; fi
if [ "$key" = io-screenshot ] && [ -f "$dir/screenshot.png" ]; then cp "$dir/screenshot.png" "$5"; fi
if [ -f "$dir/$key.out" ]; then cat "$dir/$key.out"; fi
if [ -f "$dir/$key.err" ]; then cat "$dir/$key.err" >&2; fi
if [ -f "$dir/$key.status" ]; then exit "$(cat "$dir/$key.status")"; fi
exit 0
)sh";

} // namespace

XcrunStandIn::XcrunStandIn()
    : m_savedPath(qgetenv("PATH"))
{
    const QString path = TestSupport::writeFile(m_dir.filePath("xcrun"), QString::fromLatin1(script).arg(m_dir.path()).toUtf8());
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", m_dir.path().toUtf8() + ":" + m_savedPath);
}

XcrunStandIn::~XcrunStandIn()
{
    qputenv("PATH", m_savedPath);
}

void XcrunStandIn::respond(const QString &key, const QByteArray &standardOutput, int status,
                           const QByteArray &standardError)
{
    TestSupport::writeFile(m_dir.filePath(key + ".out"), standardOutput);
    TestSupport::writeFile(m_dir.filePath(key + ".err"), standardError);
    TestSupport::writeFile(m_dir.filePath(key + ".status"), QByteArray::number(status));
}

void XcrunStandIn::setScreenshot(const QImage &image)
{
    image.save(m_dir.filePath("screenshot.png"), "PNG");
}

QList<QStringList> XcrunStandIn::calls() const
{
    QList<QStringList> calls;
    const QList<QByteArray> lines = TestSupport::readFile(m_dir.filePath("calls.log")).split('\n');
    for (const QByteArray &line : lines) {
        if (line.isEmpty())
            continue;
        QStringList arguments = QString::fromUtf8(line).split(QChar(0x1f));
        arguments.removeLast(); // after the last separator
        calls.append(arguments);
    }
    return calls;
}
