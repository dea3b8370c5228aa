#include "GeneratorConfig.h"

#include <QDir>

void GeneratorConfig::resolvePaths(const QString &directory)
{
    const QDir base(directory);
    const auto resolve = [&base](QString &path) {
        if (!path.isEmpty())
            path = QDir::cleanPath(base.absoluteFilePath(path));
    };
    resolve(appPath);
    resolve(outputDirectory);
}

QString ConfigRefusal::text() const
{
    QString lines;
    for (const ConfigProblem &problem : problems) {
        lines += fileName;
        if (problem.position.line > 0)
            lines += QStringLiteral(":%1:%2").arg(problem.position.line).arg(problem.position.column);
        lines += QStringLiteral(": ") + problem.message + QLatin1Char('\n');
    }
    return lines;
}
