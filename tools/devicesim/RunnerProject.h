#pragma once
// What `xcodebuild test` needs to know from a generated replay runner
// project: the app to drive and the steps compiled into its UI-test source,
// plus the names the source uses for its environment and marker file.

#include <QList>
#include <QString>
#include <QStringList>

struct ReplayStep
{
    QString kind; // tap, swipe, type, wait, screenshot, launch (anything else fails the test)
    double x = 0, y = 0, endX = 0, endY = 0, duration = 0;
    QString text;
    QString outputPath;
    int line = 0; // in the UI-test source
};

struct RunnerProject
{
    QString root;       // the folder that holds AutomationRunner.xcodeproj
    QString sourcePath; // AutomationUITests/AutomationUITests.swift
    QStringList sourceLines;
    QString bundleIdentifier;
    bool declaresApp = false;
    QString outputDirectoryFilePath; // the marker file the test reads
    QString progressKey = QStringLiteral("QUILLMARK_PROGRESS_FILE");
    QString outputDirectoryKey = QStringLiteral("QUILLMARK_OUTPUT_DIR");
    bool hasTestMethod = false;
    QList<ReplayStep> steps;

    // 1-based number of the first source line containing `needle`, or 1.
    int lineContaining(const QString &needle) const;
};

// Build-time problems, each line as the build prints it
// ("path:line:column: error: message").
struct BuildErrors
{
    QStringList lines;
};
