#include "ProjectCoding.h"

#include "AppError.h"
#include "UuidText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <functional>

namespace ProjectCoding {

namespace {

QString typeName(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null: return QStringLiteral("null");
    case QJsonValue::Bool: return QStringLiteral("a boolean");
    case QJsonValue::Double: return QStringLiteral("a number");
    case QJsonValue::String: return QStringLiteral("text");
    case QJsonValue::Array: return QStringLiteral("a list");
    case QJsonValue::Object: return QStringLiteral("an object");
    case QJsonValue::Undefined: break;
    }
    return QStringLiteral("nothing");
}

// Reads one JSON object and names the path of any key that is missing or of
// the wrong type, such as "screens[2].operations[0].tap.x".
class Reader
{
public:
    Reader(const QJsonObject &object, QString path) : m_object(object), m_path(std::move(path)) {}

    bool has(const QString &key) const
    {
        return m_object.contains(key) && !m_object.value(key).isNull();
    }

    QString text(const QString &key) const
    {
        const QJsonValue value = required(key);
        if (!value.isString())
            mismatch(key, QStringLiteral("text"), value);
        return value.toString();
    }

    // An identity ends up in file names and command lines, where a control
    // character (NUL among them) would cut or twist it.
    QString identity(const QString &key) const
    {
        const QString value = text(key);
        refuseControlCharacters(key, value);
        return value;
    }

    QStringList identityList(const QString &key) const
    {
        const QStringList values = textList(key);
        for (qsizetype i = 0; i < values.size(); ++i)
            refuseControlCharacters(QStringLiteral("%1[%2]").arg(key).arg(i), values.at(i));
        return values;
    }

    // A UUID in its 36-character form, in either letter case; kept in the
    // canonical upper case, which is how it is written back.
    QString uuid(const QString &key) const
    {
        const QString value = text(key);
        const QString canonical = UuidText::fromUuid(QUuid::fromString(value));
        if (canonical.compare(value, Qt::CaseInsensitive) != 0)
            throw AppError(QStringLiteral("The value of \"%1\" should be a UUID, but it is \"%2\".")
                               .arg(pathOf(key), value));
        return canonical;
    }

    bool boolean(const QString &key) const
    {
        const QJsonValue value = required(key);
        if (!value.isBool())
            mismatch(key, QStringLiteral("a boolean"), value);
        return value.toBool();
    }

    double real(const QString &key) const
    {
        const QJsonValue value = required(key);
        if (!value.isDouble())
            mismatch(key, QStringLiteral("a number"), value);
        return value.toDouble();
    }

    qint64 integer(const QString &key) const
    {
        const QJsonValue value = required(key);
        if (!value.isDouble())
            mismatch(key, QStringLiteral("a whole number"), value);
        // Each default comes back only for a value that is no 64-bit whole
        // number (fractional, or too large), which must not be read as 0.
        const qint64 whole = value.toInteger(0);
        if (whole != value.toInteger(1))
            throw AppError(QStringLiteral("The value of \"%1\" should be a whole number, but it is %2.")
                               .arg(pathOf(key), QString::number(value.toDouble(), 'g', 17)));
        return whole;
    }

    QStringList textList(const QString &key) const
    {
        const QJsonArray array = list(key);
        QStringList result;
        for (qsizetype i = 0; i < array.size(); ++i) {
            if (!array.at(i).isString())
                mismatch(QStringLiteral("%1[%2]").arg(key).arg(i), QStringLiteral("text"), array.at(i));
            result.append(array.at(i).toString());
        }
        return result;
    }

    template <class T>
    QList<T> objectList(const QString &key, const std::function<T(const Reader &)> &decodeItem) const
    {
        const QJsonArray array = list(key);
        QList<T> result;
        for (qsizetype i = 0; i < array.size(); ++i) {
            const QString itemPath = QStringLiteral("%1[%2]").arg(pathOf(key)).arg(i);
            if (!array.at(i).isObject())
                throw AppError(QStringLiteral("The value of \"%1\" should be an object, but it is %2.")
                                   .arg(itemPath, typeName(array.at(i))));
            result.append(decodeItem(Reader(array.at(i).toObject(), itemPath)));
        }
        return result;
    }

    Reader object(const QString &key) const
    {
        const QJsonValue value = required(key);
        if (!value.isObject())
            mismatch(key, QStringLiteral("an object"), value);
        return Reader(value.toObject(), pathOf(key));
    }

    const QJsonObject &raw() const { return m_object; }
    const QString &path() const { return m_path; }

private:
    QString pathOf(const QString &key) const
    {
        return m_path.isEmpty() ? key : m_path + QLatin1Char('.') + key;
    }

    QJsonValue required(const QString &key) const
    {
        if (!m_object.contains(key))
            throw AppError(QStringLiteral("The key \"%1\" is missing.").arg(pathOf(key)));
        return m_object.value(key);
    }

    QJsonArray list(const QString &key) const
    {
        const QJsonValue value = required(key);
        if (!value.isArray())
            mismatch(key, QStringLiteral("a list"), value);
        return value.toArray();
    }

    void refuseControlCharacters(const QString &key, const QString &value) const
    {
        for (const QChar c : value)
            if (c.category() == QChar::Other_Control)
                throw AppError(QStringLiteral("The value of \"%1\" holds a control character, which no identity may "
                                              "have.").arg(pathOf(key)));
    }

    [[noreturn]] void mismatch(const QString &key, const QString &expected, const QJsonValue &found) const
    {
        throw AppError(QStringLiteral("The value of \"%1\" should be %2, but it is %3.")
                           .arg(pathOf(key), expected, typeName(found)));
    }

    QJsonObject m_object;
    QString m_path;
};

const QStringList operationCases = {QStringLiteral("tap"), QStringLiteral("swipe"),
                                    QStringLiteral("type"), QStringLiteral("wait")};

OperationDraft decodeOperation(const Reader &reader)
{
    QStringList known;
    for (const QString &key : reader.raw().keys())
        if (operationCases.contains(key))
            known.append(key);
    if (known.size() != 1)
        throw AppError(QStringLiteral("Invalid number of keys found, expected one."));

    const QString &kind = known.first();
    const Reader payload = reader.object(kind);
    if (kind == QLatin1String("tap"))
        return OperationDraft::tap(payload.integer(QStringLiteral("x")), payload.integer(QStringLiteral("y")));
    if (kind == QLatin1String("swipe"))
        return OperationDraft::swipe(payload.integer(QStringLiteral("startX")), payload.integer(QStringLiteral("startY")),
                                     payload.integer(QStringLiteral("endX")), payload.integer(QStringLiteral("endY")),
                                     payload.real(QStringLiteral("duration")));
    if (kind == QLatin1String("type"))
        return OperationDraft::type(payload.text(QStringLiteral("text")));
    return OperationDraft::wait(payload.real(QStringLiteral("seconds")));
}

ScreenDraft decodeScreen(const Reader &reader)
{
    ScreenDraft screen;
    screen.id = reader.uuid(QStringLiteral("id"));
    screen.name = reader.text(QStringLiteral("name"));
    screen.state = reader.text(QStringLiteral("state"));
    screen.sampleName = reader.text(QStringLiteral("sampleName"));
    screen.launchWaitSeconds = reader.real(QStringLiteral("launchWaitSeconds"));
    screen.operations = reader.objectList<OperationDraft>(QStringLiteral("operations"),
                                                          [](const Reader &r) { return decodeOperation(r); });
    return screen;
}

ManualScreenDraft decodeManualScreen(const Reader &reader)
{
    ManualScreenDraft manual;
    manual.id = reader.uuid(QStringLiteral("id"));
    manual.index = reader.integer(QStringLiteral("index"));
    manual.name = reader.text(QStringLiteral("name"));
    if (reader.has(QStringLiteral("filename")))
        manual.filename = reader.text(QStringLiteral("filename"));
    return manual;
}

QJsonArray toArray(const QStringList &list)
{
    return QJsonArray::fromStringList(list);
}

} // namespace

QJsonObject encodeOperation(const OperationDraft &operation)
{
    QJsonObject payload;
    if (const auto *tap = operation.as<TapOperation>()) {
        payload.insert(QStringLiteral("x"), tap->x);
        payload.insert(QStringLiteral("y"), tap->y);
    } else if (const auto *swipe = operation.as<SwipeOperation>()) {
        payload.insert(QStringLiteral("startX"), swipe->startX);
        payload.insert(QStringLiteral("startY"), swipe->startY);
        payload.insert(QStringLiteral("endX"), swipe->endX);
        payload.insert(QStringLiteral("endY"), swipe->endY);
        payload.insert(QStringLiteral("duration"), swipe->duration);
    } else if (const auto *type = operation.as<TypeOperation>()) {
        payload.insert(QStringLiteral("text"), type->text);
    } else if (const auto *wait = operation.as<WaitOperation>()) {
        payload.insert(QStringLiteral("seconds"), wait->seconds);
    }
    return QJsonObject{{operation.caseName(), payload}};
}

QJsonObject encodeScreen(const ScreenDraft &screen)
{
    QJsonArray operations;
    for (const OperationDraft &operation : screen.operations)
        operations.append(encodeOperation(operation));
    return QJsonObject{
        {QStringLiteral("id"), screen.id},
        {QStringLiteral("name"), screen.name},
        {QStringLiteral("state"), screen.state},
        {QStringLiteral("sampleName"), screen.sampleName},
        {QStringLiteral("launchWaitSeconds"), screen.launchWaitSeconds},
        {QStringLiteral("operations"), operations},
    };
}

QJsonObject encode(const ScreenshotProject &p)
{
    QJsonObject o;
    const auto optionalText = [&o](const char *key, const std::optional<QString> &value) {
        if (value)
            o.insert(QLatin1String(key), *value);
    };
    if (p.schemaVersion)
        o.insert(QStringLiteral("schemaVersion"), *p.schemaVersion);
    optionalText("projectID", p.projectID);
    optionalText("projectName", p.projectName);
    if (p.createdAt)
        o.insert(QStringLiteral("createdAt"), *p.createdAt);
    if (p.updatedAt)
        o.insert(QStringLiteral("updatedAt"), *p.updatedAt);
    o.insert(QStringLiteral("appPath"), p.appPath);
    o.insert(QStringLiteral("appName"), p.appName);
    o.insert(QStringLiteral("bundleId"), p.bundleId);
    optionalText("attachedDeviceName", p.attachedDeviceName);
    o.insert(QStringLiteral("isSimulatorBuild"), p.isSimulatorBuild);
    o.insert(QStringLiteral("outputDirectory"), p.outputDirectory);
    o.insert(QStringLiteral("devices"), toArray(p.devices));
    o.insert(QStringLiteral("languages"), toArray(p.languages));
    o.insert(QStringLiteral("openSimulator"), p.openSimulator);
    o.insert(QStringLiteral("resetAppData"), p.resetAppData);
    o.insert(QStringLiteral("launchWaitSeconds"), p.launchWaitSeconds);
    o.insert(QStringLiteral("globalLaunchArguments"), toArray(p.globalLaunchArguments));
    o.insert(QStringLiteral("stateArgumentName"), p.stateArgumentName);
    o.insert(QStringLiteral("sampleNameArgumentName"), p.sampleNameArgumentName);
    QJsonArray screens;
    for (const ScreenDraft &screen : p.screens)
        screens.append(encodeScreen(screen));
    o.insert(QStringLiteral("screens"), screens);
    if (p.manualCaptureIndex)
        o.insert(QStringLiteral("manualCaptureIndex"), *p.manualCaptureIndex);
    if (p.manualScreens) {
        QJsonArray manual;
        for (const ManualScreenDraft &m : *p.manualScreens) {
            QJsonObject item{{QStringLiteral("id"), m.id},
                             {QStringLiteral("index"), m.index},
                             {QStringLiteral("name"), m.name}};
            if (m.filename)
                item.insert(QStringLiteral("filename"), *m.filename);
            manual.append(item);
        }
        o.insert(QStringLiteral("manualScreens"), manual);
    }
    if (p.recordedOn)
        o.insert(QStringLiteral("recordedOn"), QJsonObject{{QStringLiteral("name"), p.recordedOn->name},
                                                           {QStringLiteral("width"), p.recordedOn->width},
                                                           {QStringLiteral("height"), p.recordedOn->height}});
    return o;
}

QByteArray encodeBytes(const ScreenshotProject &project, Layout layout)
{
    // QJsonObject keeps its keys sorted, so the pretty form is also key-sorted.
    return QJsonDocument(encode(project))
        .toJson(layout == Layout::Compact ? QJsonDocument::Compact : QJsonDocument::Indented);
}

OperationDraft decodeOperation(const QJsonObject &object)
{
    return decodeOperation(Reader(object, QString()));
}

ScreenshotProject decode(const QJsonObject &object)
{
    const Reader r(object, QString());
    ScreenshotProject p;
    p.schemaVersion = r.has(QStringLiteral("schemaVersion")) ? std::optional(r.integer(QStringLiteral("schemaVersion"))) : std::nullopt;
    p.projectID = r.has(QStringLiteral("projectID")) ? std::optional(r.identity(QStringLiteral("projectID"))) : std::nullopt;
    p.projectName = r.has(QStringLiteral("projectName")) ? std::optional(r.text(QStringLiteral("projectName"))) : std::nullopt;
    p.createdAt = r.has(QStringLiteral("createdAt")) ? std::optional(r.real(QStringLiteral("createdAt"))) : std::nullopt;
    p.updatedAt = r.has(QStringLiteral("updatedAt")) ? std::optional(r.real(QStringLiteral("updatedAt"))) : std::nullopt;
    p.appPath = r.text(QStringLiteral("appPath"));
    p.appName = r.text(QStringLiteral("appName"));
    p.bundleId = r.text(QStringLiteral("bundleId"));
    p.attachedDeviceName = r.has(QStringLiteral("attachedDeviceName")) ? std::optional(r.text(QStringLiteral("attachedDeviceName"))) : std::nullopt;
    p.isSimulatorBuild = r.boolean(QStringLiteral("isSimulatorBuild"));
    p.outputDirectory = r.text(QStringLiteral("outputDirectory"));
    p.devices = r.identityList(QStringLiteral("devices"));
    p.languages = r.textList(QStringLiteral("languages"));
    p.openSimulator = r.boolean(QStringLiteral("openSimulator"));
    p.resetAppData = r.boolean(QStringLiteral("resetAppData"));
    p.launchWaitSeconds = r.real(QStringLiteral("launchWaitSeconds"));
    p.globalLaunchArguments = r.textList(QStringLiteral("globalLaunchArguments"));
    p.stateArgumentName = r.text(QStringLiteral("stateArgumentName"));
    p.sampleNameArgumentName = r.text(QStringLiteral("sampleNameArgumentName"));
    p.screens = r.objectList<ScreenDraft>(QStringLiteral("screens"), [](const Reader &s) { return decodeScreen(s); });
    p.manualCaptureIndex = r.has(QStringLiteral("manualCaptureIndex")) ? std::optional(r.integer(QStringLiteral("manualCaptureIndex"))) : std::nullopt;
    if (r.has(QStringLiteral("manualScreens")))
        p.manualScreens = r.objectList<ManualScreenDraft>(QStringLiteral("manualScreens"),
                                                          [](const Reader &m) { return decodeManualScreen(m); });
    else
        p.manualScreens.reset();
    if (r.has(QStringLiteral("recordedOn"))) {
        const Reader device = r.object(QStringLiteral("recordedOn"));
        p.recordedOn = RecordingDevice{device.text(QStringLiteral("name")), device.real(QStringLiteral("width")),
                                       device.real(QStringLiteral("height"))};
    }
    return p;
}

ScreenshotProject decode(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw AppError(QStringLiteral("The data is not valid JSON (%1 at byte %2).")
                           .arg(error.errorString()).arg(error.offset));
    if (!document.isObject())
        throw AppError(QStringLiteral("The data is not a project document: expected a JSON object."));
    return decode(document.object());
}

} // namespace ProjectCoding
