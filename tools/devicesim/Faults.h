#pragma once
// Faults that tests switch on to drive the product through its failure
// paths with the same command lines a Mac would see.

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

struct Faults
{
    struct MissingApp
    {
        QString udid;
        QString bundleId;
    };
    struct Dialog
    {
        QString language; // "de-DE", or a bare "de" for every German variant
        QString screen;   // a demo app screen: trips, detail, explore, saved, settings
    };

    QList<MissingApp> missingApps;  // the app reads as not installed there
    QStringList launchFailLanguages; // simctl launch fails for these languages
    QList<Dialog> dialogs;           // an unexpected sheet covers that screen
    bool buildFails = false;         // xcodebuild stops with a compile error
    double slowBuildSeconds = 0;     // the build takes this long (never time-scaled)
    bool noXcode = false;            // only the command-line tools are installed
    QStringList hangingSubcommands;  // simctl SUBCOMMAND never answers (and leaves a child behind)
    QStringList chattySubcommands;   // simctl SUBCOMMAND writes megabytes to standard error, then fails
    bool noScreenshots = false;      // xcodebuild test succeeds without writing any screenshot
    bool openFails = false;          // `open -a Simulator` cannot start the Simulator app

    bool isAppMissing(const QString &udid, const QString &bundleId) const;
    bool launchFails(const QString &language) const;
    bool hasDialog(const QString &language, const QString &screen) const;
    bool isEmpty() const;

    QJsonObject toJson() const;
    static Faults fromJson(const QJsonObject &object);
    // One line per fault, as `devicesim fault list` prints them.
    QStringList describe() const;

    // `devicesim fault set KIND ARGS...`; returns an error text or nothing.
    QString set(const QStringList &arguments, const QString &defaultBundleId);
    // `devicesim fault clear [KIND]`; returns an error text or nothing.
    QString clear(const QString &kind);
};

namespace LanguageMatch {
// True when `requested` names `language`: equal ignoring case and "-"/"_",
// or a bare language code ("de") that matches its regional forms.
bool matches(const QString &requested, const QString &language);
}
