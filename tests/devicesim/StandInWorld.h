#pragma once
// A private world of the device stand-in for one test: its own state
// folder, links named xcrun, xcodebuild and open, no simulated pauses, and
// a helper to write a replay runner project.

#include <QHash>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

struct StandInStep
{
    QString kind;
    double x = 0, y = 0, endX = 0, endY = 0, duration = 0;
    QString text;
    QString outputPath;
};

class StandInWorld
{
public:
    StandInWorld();

    struct Result
    {
        int exitCode = -1;
        QString out;
        QString err;
    };

    static inline const QString iPhone = QStringLiteral("6E1A9C2B-4D3F-4B7A-9E51-7C2D8A4F1B36");
    static inline const QString iPad = QStringLiteral("B8F02D6C-1E7A-4C39-8D25-3A9E6F0C4D17");
    static inline const QString demoApp = QStringLiteral("com.vantrel.demo.Trips");

    QString path(const QString &relative) const { return m_dir.filePath(relative); }

    // Runs `tool` (xcrun, xcodebuild, open or devicesim) to its end.
    Result run(const QString &tool, const QStringList &arguments, const QHash<QString, QString> &environment = {},
               const QString &workingDirectory = {}) const;
    // simctl launch of the demo app in `language`; fails the test when it fails.
    void launchDemo(const QString &language, const QString &udid = iPhone) const;

    // Writes a runner project as the product generates it; returns its root.
    QString writeRunnerProject(const QList<StandInStep> &steps) const;
    // The xcodebuild arguments the replay runner passes.
    QStringList xcodebuildArguments(const QString &root, const QString &udid = iPhone) const;

private:
    QTemporaryDir m_dir;
};
