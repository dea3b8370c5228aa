// libFuzzer entry point: every input goes to the readers of outside data.
// Built only by a compiler that offers -fsanitize=fuzzer (scripts/fuzz.sh).

#include "FuzzInputs.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <cstddef>
#include <cstdint>
#include <cstring>

// The examples start the corpus: they go into the first corpus folder named
// on the command line.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    for (int i = 1; i < *argc; ++i) {
        const char *argument = (*argv)[i];
        if (argument[0] == '-')
            continue;
        QDir().mkpath(QString::fromLocal8Bit(argument));
        int n = 0;
        for (const QByteArray &seed : FuzzInputs::seeds()) {
            QFile file(QDir(QString::fromLocal8Bit(argument)).filePath(QStringLiteral("seed-%1").arg(++n)));
            if (file.open(QIODevice::WriteOnly))
                file.write(seed);
        }
        break;
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInputs::feed(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
