#include "FuzzInputs.h"

#include "generation/ConfigWriter.h"
#include "generation/GeneratorConfigReader.h"
#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/ProjectCoding.h"
#include "platform/scripted/ScriptedPlatformServices.h"
#include "recorder/CheckpointReorderJournal.h"
#include "simulator/InstalledAppParser.h"
#include "simulator/SimctlDeviceList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

namespace FuzzInputs {

namespace {

enum Reader : char {
    project = 'p',
    snapshot = 's',
    journal = 'j',
    installedApps = 'a',
    deviceList = 'd',
    generatorConfig = 'y',
};

// One scratch data root for the whole run: the readers of files read them
// from here, and only here may anything be written.
AppModel &scratchModel()
{
    static QTemporaryDir root;
    static AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
    return model;
}

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
}

void readProject(const QByteArray &input)
{
    try {
        ScreenshotProject decoded = ProjectCoding::decode(input);
        scratchModel().normalizeLoadedProject(decoded);
        // What decodes must encode and decode again to the same document.
        if (!(ProjectCoding::decode(ProjectCoding::encodeBytes(decoded)) == decoded))
            qFatal("a decoded project does not survive encoding");
    } catch (const AppError &) {
    }
}

void readSnapshotAndLibrary(const QByteArray &input)
{
    AppModel &model = scratchModel();
    write(model.snapshotsDirectory() + QStringLiteral("/project-snapshot-fuzz.json"), input);
    write(model.projectsDirectory() + QStringLiteral("/FUZZ.json"), input);
    model.refreshProjectSnapshots();
    model.refreshProjectLibrary();
}

void readJournal(const QByteArray &input)
{
    const QString folder = scratchModel().manualCaptureDirectory();
    write(CheckpointReorderJournal::path(folder), input);
    if (std::optional<CheckpointReorderJournal> journal = CheckpointReorderJournal::read(folder)) {
        try {
            journal->undo(folder); // only ever renames inside the folder
        } catch (const AppError &) {
        }
    }
}

} // namespace

void feed(const QByteArray &data)
{
    if (data.isEmpty())
        return;
    const QByteArray input = data.mid(1);
    switch (data.at(0)) {
    case project: readProject(input); break;
    case snapshot: readSnapshotAndLibrary(input); break;
    case journal: readJournal(input); break;
    case installedApps: InstalledAppParser::parse(QString::fromUtf8(input)); break;
    case deviceList:
        try {
            SimctlDeviceList::decode(input).iOSDevices();
        } catch (const AppError &) {
        }
        break;
    case generatorConfig:
        // yaml-cpp's own exceptions must not get past the reader either.
        GeneratorConfigReader::read(input, QStringLiteral("fuzz.yaml"));
        break;
    default: break;
    }
}

QList<QByteArray> seeds()
{
    ScreenshotProject sample;
    sample.projectID = QStringLiteral("3F2504E0-4F89-11D3-9A0C-0305E82C3301");
    sample.projectName = QStringLiteral("Travel \u65E5\u672C");
    sample.outputDirectory = QStringLiteral("/tmp/out");
    sample.devices = {QStringLiteral("6E1A9C2B-4D3F-4B7A-9E51-7C2D8A4F1B36")};
    sample.screens = {ScreenDraft{.id = QStringLiteral("9B2E1C44-0D5A-4E8B-8F3C-1A2B3C4D5E6F"), .name = QStringLiteral("home"),
                                  .operations = {OperationDraft::tap(10, 20), OperationDraft::wait(1.5),
                                                 OperationDraft::swipe(1, 2, 3, 4, 0.5), OperationDraft::type("x")}}};
    sample.manualScreens = QList<ManualScreenDraft>{
        {QStringLiteral("1C2D3E4F-5A6B-4C7D-8E9F-0A1B2C3D4E5F"), 1, QStringLiteral("home"), QStringLiteral("01-home.png")}};
    sample.manualCaptureIndex = 2;
    const QByteArray document = ProjectCoding::encodeBytes(sample);
    return {
        char(project) + document,
        char(snapshot) + ProjectCoding::encodeBytes(sample, ProjectCoding::Layout::PrettySorted),
        char(journal) + QByteArray("{\"phase\":\"placing\",\"after\":[\"01-b.png\",\"02-a.png\"],\"moves\":["
                                   "{\"from\":\"01-a.png\",\"parked\":\".reorder-1.png\",\"to\":\"02-a.png\"}]}"),
        char(installedApps) + QByteArray("{\n    \"com.example.App\" =     {\n        ApplicationType = User;\n"
                                         "        CFBundleDisplayName = \"Caf\\U00e9\";\n"
                                         "        CFBundleIdentifier = \"com.example.App\";\n    };\n}\n"),
        char(deviceList) + QByteArray("{\"devices\":{\"com.apple.CoreSimulator.SimRuntime.iOS-17-5\":[{\"name\":"
                                      "\"iPhone 15\",\"udid\":\"AB\",\"state\":\"Booted\",\"isAvailable\":true}]}}"),
        char(generatorConfig) + ConfigWriter::yaml(sample).toUtf8(),
    };
}

} // namespace FuzzInputs
