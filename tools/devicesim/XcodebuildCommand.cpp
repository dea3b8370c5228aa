#include "XcodebuildCommand.h"

#include "Console.h"
#include "Pause.h"
#include "RunnerProjectReader.h"
#include "SimctlSupport.h"
#include "StateStore.h"
#include "ToolFailure.h"
#include "UITestRun.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>

namespace XcodebuildCommand {

namespace {

struct Options
{
    QString action;
    QString project;
    QString scheme;
    QString destination;
    QString derivedDataPath;
    bool quiet = false;
    bool version = false;
    QStringList buildSettings;
};

const QStringList valueOptions = {
    QStringLiteral("-project"), QStringLiteral("-scheme"), QStringLiteral("-destination"),
    QStringLiteral("-derivedDataPath"), QStringLiteral("-configuration"), QStringLiteral("-sdk"),
    QStringLiteral("-workspace"), QStringLiteral("-resultBundlePath"), QStringLiteral("-testPlan"),
    QStringLiteral("-only-testing"), QStringLiteral("-skip-testing"), QStringLiteral("-destination-timeout"),
    QStringLiteral("-parallel-testing-enabled"), QStringLiteral("-xcconfig"), QStringLiteral("-target"),
};

ToolFailure toolError(const QString &message, int status)
{
    return {QStringLiteral("xcodebuild: error: %1\n").arg(message), status};
}

Options parseXcodebuildOptions(const QStringList &arguments)
{
    Options o;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &a = arguments[i];
        if (valueOptions.contains(a)) {
            if (i + 1 >= arguments.size())
                throw toolError(QStringLiteral("option '%1' requires at least one argument").arg(a), 64);
            const QString value = arguments[++i];
            if (a == QLatin1String("-project")) o.project = value;
            else if (a == QLatin1String("-scheme")) o.scheme = value;
            else if (a == QLatin1String("-destination")) o.destination = value;
            else if (a == QLatin1String("-derivedDataPath")) o.derivedDataPath = value;
        } else if (a == QLatin1String("-quiet")) {
            o.quiet = true;
        } else if (a == QLatin1String("-version")) {
            o.version = true;
        } else if (a.startsWith(QLatin1Char('-'))) {
            continue; // flags that change nothing here (-verbose, -allowProvisioningUpdates, ...)
        } else if (a.contains(QLatin1Char('='))) {
            o.buildSettings.append(a);
        } else if (o.action.isEmpty()) {
            o.action = a;
        } else {
            throw toolError(QStringLiteral("Unknown build action '%1'.").arg(a), 64);
        }
    }
    if (o.action.isEmpty())
        o.action = QStringLiteral("build");
    return o;
}

QString projectPath(const Options &o)
{
    if (!o.project.isEmpty()) {
        if (!QFileInfo(o.project).isDir())
            throw toolError(QStringLiteral("'%1' does not exist.").arg(o.project), 66);
        return QFileInfo(o.project).absoluteFilePath();
    }
    const QStringList found = QDir::current().entryList({QStringLiteral("*.xcodeproj")}, QDir::Dirs);
    if (found.isEmpty())
        throw toolError(QStringLiteral("The directory %1 does not contain an Xcode project, workspace or package.")
                            .arg(QDir::currentPath()),
                        66);
    return QDir::current().absoluteFilePath(found.first());
}

// The project file must be there and look like one; the scheme must exist
// and run the UI tests.
void checkProject(const QString &project, const QString &scheme)
{
    const QString name = QFileInfo(project).completeBaseName();
    QFile pbx(QDir(project).filePath(QStringLiteral("project.pbxproj")));
    if (!pbx.open(QIODevice::ReadOnly))
        throw toolError(QStringLiteral("Unable to read project '%1'.\n\tReason: Project %2 cannot be opened because it "
                                       "is missing its project.pbxproj file.")
                            .arg(QFileInfo(project).fileName(), project),
                        74);
    const QByteArray text = pbx.readAll();
    if (!text.startsWith("// !$*UTF8*$!") || !text.contains("rootObject"))
        throw toolError(QStringLiteral("Unable to read project '%1'.\n\tReason: The project ‘%2’ is damaged and cannot "
                                       "be opened. Examine the project file for invalid edits or unresolved source "
                                       "control conflicts.")
                            .arg(QFileInfo(project).fileName(), name),
                        74);
    if (scheme.isEmpty())
        throw toolError(QStringLiteral("The test action requires that the name of a scheme in the project is provided "
                                       "using the \"-scheme\" option. The \"-list\" option can be used to find the names "
                                       "of the schemes in the project."),
                        65);
    QFile schemeFile(QDir(project).filePath(QStringLiteral("xcshareddata/xcschemes/%1.xcscheme").arg(scheme)));
    if (!schemeFile.open(QIODevice::ReadOnly))
        throw toolError(QStringLiteral("The project named \"%1\" does not contain a scheme named \"%2\". The \"-list\" "
                                       "option can be used to find the names of the schemes in the project.")
                            .arg(name, scheme),
                        65);
    const QByteArray schemeText = schemeFile.readAll();
    if (!schemeText.contains("<TestAction") || !schemeText.contains("AutomationUITests.xctest"))
        throw toolError(QStringLiteral("Failed to build project %1 with scheme %2.: Scheme %2 is not currently "
                                       "configured for the test action.")
                            .arg(name, scheme),
                        66);
}

QString destinationText(const QString &specifier)
{
    QStringList parts;
    for (const QString &pair : specifier.split(QLatin1Char(','), Qt::SkipEmptyParts))
        parts.append(pair.trimmed().replace(QLatin1Char('='), QLatin1Char(':')));
    return QStringLiteral("{ %1 }").arg(parts.join(QStringLiteral(", ")));
}

// The simulator the destination names: "id=UDID", or "platform=iOS
// Simulator,name=NAME[,OS=x.y]". Only available iOS simulators qualify.
QString destinationDevice(const Options &o)
{
    QHash<QString, QString> keys;
    for (const QString &pair : o.destination.split(QLatin1Char(','), Qt::SkipEmptyParts))
        keys.insert(pair.section(QLatin1Char('='), 0, 0).trimmed(), pair.section(QLatin1Char('='), 1).trimmed());
    const World world = StateStore::read();
    QStringList available;
    for (const Device &d : world.devices) {
        const bool ios = d.platform() == QLatin1String("iOS") || d.platform() == QLatin1String("iPadOS");
        if (!ios || !d.isAvailable)
            continue;
        const QString os = RuntimeName::displayName(d.runtime).section(QLatin1Char(' '), 1);
        available.append(QStringLiteral("\t\t{ platform:iOS Simulator, id:%1, OS:%2, name:%3 }").arg(d.udid, os, d.name));
        const bool idMatches = keys.contains(QStringLiteral("id")) && keys.value(QStringLiteral("id")).compare(d.udid, Qt::CaseInsensitive) == 0;
        const bool nameMatches = !keys.contains(QStringLiteral("id")) && keys.value(QStringLiteral("name")) == d.name
            && (!keys.contains(QStringLiteral("OS")) || keys.value(QStringLiteral("OS")) == os);
        if (idMatches || nameMatches)
            return d.udid;
    }
    throw toolError(QStringLiteral("Unable to find a destination matching the provided destination specifier:\n"
                                   "\t\t%1\n\n\tAvailable destinations for the \"%2\" scheme:\n%3\n")
                        .arg(destinationText(o.destination), o.scheme, available.join(QLatin1Char('\n'))),
                    70);
}

QHash<QString, QString> environment()
{
    QHash<QString, QString> map;
    const QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString &key : env.keys())
        map.insert(key, env.value(key));
    return map;
}

[[noreturn]] void failTests(const QString &details, const QString &summary, int status = 65)
{
    throw ToolFailure{QStringLiteral("Testing failed:\n\t%1\n\n** TEST FAILED **\n").arg(summary), status, details};
}

// A build takes its time (less when DerivedData is already there) and may
// fail: source problems, or the build-fails fault.
RunnerProject build(const QString &project, const Options &o, const Faults &faults)
{
    const QString derived = o.derivedDataPath.isEmpty()
        ? QDir(StateStore::home()).filePath(QStringLiteral("DerivedData/AutomationRunner"))
        : QFileInfo(o.derivedDataPath).absoluteFilePath();
    const QString products = QDir(derived).filePath(QStringLiteral("Build/Products/Debug-iphonesimulator"));
    const bool incremental = QFileInfo::exists(products);
    if (faults.slowBuildSeconds > 0)
        Pause::exact(faults.slowBuildSeconds);
    else
        Pause::scaled(incremental ? 0.6 : 1.8);
    RunnerProject runner;
    try {
        runner = RunnerProjectReader::read(project);
    } catch (const BuildErrors &errors) {
        failTests(errors.lines.join(QLatin1Char('\n')) + QLatin1Char('\n'),
                  errors.lines.first().section(QStringLiteral("error: "), 1)
                      + QStringLiteral("\n\tTesting cancelled because the build failed."));
    }
    if (faults.buildFails) {
        const int line = runner.lineContaining(QStringLiteral("let steps"));
        const QString error = QStringLiteral("%1:%2:5: error: type-checking of the steps array timed out after "
                                             "200ms (build-fails fault)")
                                  .arg(runner.sourcePath)
                                  .arg(line);
        failTests(error + QLatin1Char('\n'), QStringLiteral("Type-checking of the steps array timed out.\n\tTesting "
                                                            "cancelled because the build failed."));
    }
    QDir().mkpath(QDir(products).filePath(QStringLiteral("AutomationHost.app")));
    QDir().mkpath(QDir(products).filePath(QStringLiteral("AutomationUITests-Runner.app")));
    QDir().mkpath(QDir(derived).filePath(QStringLiteral("Logs/Test")));
    return runner;
}

// A destination that is shut down is booted by the build tool itself.
void bootIfNeeded(const QString &udid)
{
    StateStore::modify([&](World &world) {
        Device *d = world.device(udid);
        if (d && !d->isBooted()) {
            d->state = QStringLiteral("Booted");
            d->lastBootedAt = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
        }
    });
}

int test(const Options &o, const QString &project)
{
    const QString udid = destinationDevice(o);
    const World world = StateStore::read();
    const RunnerProject runner = build(project, o, world.faults);
    if (o.action != QLatin1String("test"))
        return 0;
    bootIfNeeded(udid);
    const QString testCase = QStringLiteral("-[AutomationUITests.AutomationUITests testReplaySteps]");
    UITestRun run(runner, udid, environment());
    try {
        if (runner.hasTestMethod)
            run.run();
    } catch (const TestFailure &failure) {
        const QString details = QStringLiteral("Test Case '%1' started.\n%2\n%3:%4: error: %1 : %5\nTest Case '%1' failed (%6 seconds).\n")
                                    .arg(testCase, run.activity().join(QLatin1Char('\n')), runner.sourcePath)
                                    .arg(failure.line)
                                    .arg(failure.message)
                                    .arg(run.elapsedSeconds(), 0, 'f', 3);
        failTests(details, QStringLiteral("AutomationUITests.testReplaySteps(): ") + failure.message);
    }
    if (!o.quiet)
        Console::out(QStringLiteral("Test Case '%1' started.\n%2\nTest Case '%1' passed (%3 seconds).\n\n** TEST SUCCEEDED **\n\n")
                         .arg(testCase, run.activity().join(QLatin1Char('\n')))
                         .arg(run.elapsedSeconds(), 0, 'f', 3));
    return 0;
}

} // namespace

int run(const QStringList &arguments)
{
    const Options o = parseXcodebuildOptions(arguments);
    const World world = StateStore::read();
    if (world.faults.noXcode)
        throw ToolFailure{QStringLiteral("xcode-select: error: tool 'xcodebuild' requires Xcode, but active developer "
                                         "directory '/Library/Developer/CommandLineTools' is a command line tools "
                                         "instance\n"),
                          1};
    if (o.version) {
        Console::out(QStringLiteral("Xcode 15.4\nBuild version 15F31d\n"));
        return 0;
    }
    if (o.action == QLatin1String("clean"))
        return 0;
    if (o.action != QLatin1String("test") && o.action != QLatin1String("build") && o.action != QLatin1String("build-for-testing"))
        throw toolError(QStringLiteral("Unknown build action '%1'.").arg(o.action), 64);
    const QString project = projectPath(o);
    checkProject(project, o.scheme);
    if (o.destination.isEmpty())
        throw toolError(QStringLiteral("Failed to build project %1 with scheme %2.: Tests must be run on a concrete "
                                       "device (use -destination to name a simulator)")
                            .arg(QFileInfo(project).completeBaseName(), o.scheme),
                        70);
    if (!o.quiet)
        Console::out(QStringLiteral("Command line invocation:\n    /Applications/Xcode.app/Contents/Developer/usr/bin/"
                                    "xcodebuild %1\n\n")
                         .arg(arguments.join(QLatin1Char(' '))));
    try {
        return test(o, project);
    } catch (const Pause::Interrupted &) {
        Console::out(QStringLiteral("\n** TEST INTERRUPTED **\n\n"));
        throw;
    }
}

} // namespace XcodebuildCommand
