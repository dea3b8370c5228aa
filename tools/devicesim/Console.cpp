#include "Console.h"

#include <cstdio>

namespace Console {

static void write(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

void out(const QString &text) { write(stdout, text); }
void err(const QString &text) { write(stderr, text); }

} // namespace Console
