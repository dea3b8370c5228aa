#include "AppBundle.h"

#include "DemoStrings.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUuid>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace AppBundle {

namespace {

// Container folders carry a UUID in their names, as the real ones do; it is
// derived from the device and the app so that it stays put between runs.
QString containerUuid(const QString &udid, const QString &bundleId, const QString &kind)
{
    const QUuid ns(QStringLiteral("{6f1c2a4e-2f0b-4c1e-9a57-3d6b1e2f7a10}"));
    return QUuid::createUuidV5(ns, udid + QLatin1Char('/') + bundleId + QLatin1Char('/') + kind)
        .toString(QUuid::WithoutBraces)
        .toUpper();
}

void writeKeyString(QXmlStreamWriter &xml, const QString &key, const QString &value)
{
    xml.writeTextElement(QStringLiteral("key"), key);
    xml.writeTextElement(QStringLiteral("string"), value);
}

QByteArray demoInfoPlist()
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(-1); // tabs, as the platform's writer does
    xml.writeStartDocument();
    xml.writeDTD(QStringLiteral("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
    xml.writeStartElement(QStringLiteral("plist"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    xml.writeStartElement(QStringLiteral("dict"));
    writeKeyString(xml, QStringLiteral("CFBundleDevelopmentRegion"), QStringLiteral("en"));
    writeKeyString(xml, QStringLiteral("CFBundleDisplayName"), DemoStrings::appDisplayName);
    writeKeyString(xml, QStringLiteral("CFBundleExecutable"), QStringLiteral("Trips"));
    writeKeyString(xml, QStringLiteral("CFBundleIdentifier"), demoBundleId);
    writeKeyString(xml, QStringLiteral("CFBundleName"), QStringLiteral("Trips"));
    writeKeyString(xml, QStringLiteral("CFBundlePackageType"), QStringLiteral("APPL"));
    writeKeyString(xml, QStringLiteral("CFBundleShortVersionString"), QStringLiteral("2.4"));
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("CFBundleSupportedPlatforms"));
    xml.writeStartElement(QStringLiteral("array"));
    xml.writeTextElement(QStringLiteral("string"), QStringLiteral("iPhoneSimulator"));
    xml.writeEndElement();
    writeKeyString(xml, QStringLiteral("CFBundleVersion"), QStringLiteral("42"));
    writeKeyString(xml, QStringLiteral("DTPlatformName"), QStringLiteral("iphonesimulator"));
    writeKeyString(xml, QStringLiteral("MinimumOSVersion"), QStringLiteral("16.0"));
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

QString bundleContainer(const QString &deviceData, const QString &udid, const QString &bundleId)
{
    return QDir(deviceData).filePath(QStringLiteral("Containers/Bundle/Application/")
                                     + containerUuid(udid, bundleId, QStringLiteral("bundle")));
}

QString dataContainer(const QString &deviceData, const QString &udid, const QString &bundleId)
{
    return QDir(deviceData).filePath(QStringLiteral("Containers/Data/Application/")
                                     + containerUuid(udid, bundleId, QStringLiteral("data")));
}

InstalledApp demoApp(const QString &deviceData, const QString &udid)
{
    InstalledApp app;
    app.bundleId = demoBundleId;
    app.displayName = DemoStrings::appDisplayName;
    app.bundleName = QStringLiteral("Trips");
    app.executable = QStringLiteral("Trips");
    app.version = QStringLiteral("42");
    app.shortVersion = QStringLiteral("2.4");
    app.bundlePath = bundleContainer(deviceData, udid, demoBundleId) + QStringLiteral("/Trips.app");
    app.dataPath = dataContainer(deviceData, udid, demoBundleId);
    return app;
}

bool writeDemoBundle(const QString &bundlePath)
{
    QDir dir(bundlePath);
    if (!dir.mkpath(QStringLiteral(".")))
        return false;
    for (const QString &region : DemoStrings::bundleLocalizations())
        if (!dir.mkpath(region + QStringLiteral(".lproj")))
            return false;
    return writeFile(dir.filePath(QStringLiteral("Info.plist")), demoInfoPlist())
        && writeFile(dir.filePath(QStringLiteral("Trips")), QByteArrayLiteral("#!/bin/sh\n# demo app stand-in\n"));
}

std::optional<InstalledApp> read(const QString &bundlePath)
{
    QFile file(QDir(bundlePath).filePath(QStringLiteral("Info.plist")));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QXmlStreamReader xml(&file);
    QHash<QString, QString> strings;
    QString key;
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++depth;
            if (depth == 3 && xml.name() == QLatin1String("key"))
                key = xml.readElementText(), --depth;
            else if (depth == 3 && xml.name() == QLatin1String("string") && !key.isEmpty())
                strings.insert(key, xml.readElementText()), --depth;
        } else if (xml.isEndElement()) {
            --depth;
        }
    }
    if (xml.hasError() || strings.value(QStringLiteral("CFBundleIdentifier")).isEmpty())
        return std::nullopt;
    InstalledApp app;
    app.bundleId = strings.value(QStringLiteral("CFBundleIdentifier"));
    app.displayName = strings.value(QStringLiteral("CFBundleDisplayName"));
    app.bundleName = strings.value(QStringLiteral("CFBundleName"), QFileInfo(bundlePath).completeBaseName());
    app.executable = strings.value(QStringLiteral("CFBundleExecutable"), app.bundleName);
    app.version = strings.value(QStringLiteral("CFBundleVersion"), app.version);
    app.shortVersion = strings.value(QStringLiteral("CFBundleShortVersionString"), app.shortVersion);
    return app;
}

} // namespace AppBundle
