#include "GeneratorConfigReader.h"

#include <QSet>
#include <cmath>
#include <functional>
#include <string>
#include <vector>
#include <yaml-cpp/yaml.h>

namespace {

QString fromStd(const std::string &text) { return QString::fromStdString(text); }

ConfigPosition positionOf(const YAML::Mark &mark)
{
    if (mark.is_null())
        return {};
    return {mark.line + 1, mark.column + 1};
}

// What a value is, for "must be ..., not X".
QString describe(const YAML::Node &node)
{
    switch (node.Type()) {
    case YAML::NodeType::Scalar: return QLatin1Char('\'') + fromStd(node.Scalar()) + QLatin1Char('\'');
    case YAML::NodeType::Sequence: return QStringLiteral("a list");
    case YAML::NodeType::Map: return QStringLiteral("a mapping");
    default: return QStringLiteral("an empty value");
    }
}

class Reader
{
public:
    QList<ConfigProblem> problems;

    struct Field
    {
        QString key;
        bool required = false;
        // Gets the key (for its place in the file) and the value.
        std::function<void(const YAML::Node &key, const YAML::Node &value)> read;
    };

    // A problem at `node`, or at `fallback` (its key) when the node is an
    // empty value: that stands where the next token does, often a line below.
    void problem(const YAML::Node &node, const QString &message, const YAML::Node &fallback = YAML::Node())
    {
        ConfigPosition position = positionOf(node.Mark());
        if ((position.line == 0 || node.IsNull()) && fallback.IsDefined())
            position = positionOf(fallback.Mark());
        problems.append({position, message});
    }

    // Hands each key of `node` to its field; unknown, repeated and missing
    // keys are problems. `what` names the mapping in messages.
    void mapping(const YAML::Node &node, const QString &what, const std::vector<Field> &fields)
    {
        if (!node.IsMap()) {
            problem(node, what + QStringLiteral(" must be a mapping of keys to values, not ") + describe(node));
            return;
        }
        QStringList keys;
        for (const Field &field : fields)
            keys.append(field.key);
        QSet<QString> seen;
        for (auto entry = node.begin(); entry != node.end(); ++entry) {
            const YAML::Node key = entry->first;
            const QString name = key.IsScalar() ? fromStd(key.Scalar()) : describe(key);
            const auto field = std::find_if(fields.begin(), fields.end(), [&](const Field &f) { return f.key == name; });
            if (field == fields.end()) {
                problem(key, QStringLiteral("unknown key '%1' in %2; the keys there are %3")
                                 .arg(name, what, keys.join(QStringLiteral(", "))));
            } else if (seen.contains(name)) {
                problem(key, QStringLiteral("'%1' appears twice in %2").arg(name, what));
            } else {
                seen.insert(name);
                field->read(key, entry->second);
            }
        }
        for (const Field &field : fields)
            if (field.required && !seen.contains(field.key))
                problem(node, QStringLiteral("%1 lacks the key '%2'").arg(what, field.key));
    }

    std::optional<QString> text(const YAML::Node &value, const YAML::Node &key, const QString &label, bool allowEmpty)
    {
        if (!value.IsScalar()) {
            problem(value, label + QStringLiteral(" must be text, not ") + describe(value), key);
            return std::nullopt;
        }
        const QString result = fromStd(value.Scalar());
        if (!allowEmpty && result.trimmed().isEmpty()) {
            problem(value, label + QStringLiteral(" is empty"), key);
            return std::nullopt;
        }
        return result;
    }

    // A list of text; the key alone (no value) is an empty list.
    std::optional<QStringList> textList(const YAML::Node &value, const YAML::Node &key, const QString &label,
                                        bool allowEmptyItems, QList<ConfigPosition> *positions = nullptr)
    {
        if (value.IsNull())
            return QStringList();
        if (!value.IsSequence()) {
            problem(value, label + QStringLiteral(" must be a list of text, not ") + describe(value), key);
            return std::nullopt;
        }
        QStringList items;
        bool ok = true;
        for (std::size_t i = 0; i < value.size(); ++i) {
            const YAML::Node item = value[i];
            const std::optional<QString> entry =
                text(item, key, QStringLiteral("%1 entry %2").arg(label).arg(i + 1), allowEmptyItems);
            ok = ok && entry.has_value();
            if (!entry)
                continue;
            items.append(*entry);
            if (positions)
                positions->append(positionOf(item.Mark()));
        }
        return ok ? std::optional(items) : std::nullopt;
    }

    // A list whose entries must differ and of which the run needs one at least.
    std::optional<QStringList> requiredTextList(const YAML::Node &value, const YAML::Node &key, const QString &label,
                                                const QString &hint, QList<ConfigPosition> *positions = nullptr)
    {
        std::optional<QStringList> items = textList(value, key, label, false, positions);
        if (!items)
            return std::nullopt;
        if (items->isEmpty()) {
            problem(value, label + QStringLiteral(" is empty; ") + hint, key);
            return std::nullopt;
        }
        for (qsizetype i = 0; i < items->size(); ++i) {
            if (items->indexOf(items->at(i)) < i) {
                problem(value[std::size_t(i)], QStringLiteral("%1 lists %2 twice").arg(label, items->at(i)), key);
                return std::nullopt;
            }
        }
        return items;
    }

    std::optional<bool> flag(const YAML::Node &value, const YAML::Node &key, const QString &label)
    {
        bool result = false;
        if (!value.IsScalar() || !YAML::convert<bool>::decode(value, result)) {
            problem(value, label + QStringLiteral(" must be true or false, not ") + describe(value), key);
            return std::nullopt;
        }
        return result;
    }

    std::optional<double> seconds(const YAML::Node &value, const YAML::Node &key, const QString &label)
    {
        double result = 0;
        if (!value.IsScalar() || !YAML::convert<double>::decode(value, result) || !std::isfinite(result)) {
            problem(value, label + QStringLiteral(" must be a number of seconds, not ") + describe(value), key);
            return std::nullopt;
        }
        if (result < 0) {
            problem(value, label + QStringLiteral(" must not be negative"), key);
            return std::nullopt;
        }
        return result;
    }

    std::optional<qint64> points(const YAML::Node &value, const YAML::Node &key, const QString &label)
    {
        long long result = 0;
        if (!value.IsScalar() || !YAML::convert<long long>::decode(value, result)) {
            problem(value, label + QStringLiteral(" must be a whole number of points, not ") + describe(value), key);
            return std::nullopt;
        }
        return qint64(result);
    }

    std::optional<OperationDraft> tap(const YAML::Node &value, const QString &what)
    {
        std::optional<qint64> x, y;
        mapping(value, what, {
            {QStringLiteral("x"), true, [&](auto &k, auto &v) { x = points(v, k, what + QStringLiteral(" x")); }},
            {QStringLiteral("y"), true, [&](auto &k, auto &v) { y = points(v, k, what + QStringLiteral(" y")); }},
        });
        if (!x || !y)
            return std::nullopt;
        return OperationDraft::tap(*x, *y);
    }

    std::optional<OperationDraft> swipe(const YAML::Node &value, const QString &what)
    {
        std::optional<qint64> startX, startY, endX, endY;
        std::optional<double> duration;
        const auto coordinate = [this, &what](std::optional<qint64> *into, const QString &name) {
            return Field{name, true, [this, into, name, what](auto &k, auto &v) {
                             *into = points(v, k, what + QLatin1Char(' ') + name);
                         }};
        };
        mapping(value, what, {
            coordinate(&startX, QStringLiteral("startX")),
            coordinate(&startY, QStringLiteral("startY")),
            coordinate(&endX, QStringLiteral("endX")),
            coordinate(&endY, QStringLiteral("endY")),
            {QStringLiteral("duration"), true,
             [&](auto &k, auto &v) { duration = seconds(v, k, what + QStringLiteral(" duration")); }},
        });
        if (!startX || !startY || !endX || !endY || !duration)
            return std::nullopt;
        return OperationDraft::swipe(*startX, *startY, *endX, *endY, *duration);
    }

    std::optional<OperationDraft> operation(const YAML::Node &item, const QString &what)
    {
        if (!item.IsMap() || item.size() != 1) {
            problem(item, what + QStringLiteral(" must be one of tap, swipe, type or wait (one per list entry), not ")
                              + describe(item));
            return std::nullopt;
        }
        const auto entry = item.begin();
        const YAML::Node key = entry->first;
        const YAML::Node value = entry->second;
        const QString kind = key.IsScalar() ? fromStd(key.Scalar()) : describe(key);
        const QString label = what + QStringLiteral(" (") + kind + QLatin1Char(')');
        if (kind == QLatin1String("tap"))
            return tap(value, label);
        if (kind == QLatin1String("swipe"))
            return swipe(value, label);
        if (kind == QLatin1String("type")) {
            const std::optional<QString> typed = text(value, key, label, true);
            return typed ? std::optional(OperationDraft::type(*typed)) : std::nullopt;
        }
        if (kind == QLatin1String("wait")) {
            const std::optional<double> pause = seconds(value, key, label);
            return pause ? std::optional(OperationDraft::wait(*pause)) : std::nullopt;
        }
        problem(key, QStringLiteral("unknown operation '%1' in %2; the operations are tap, swipe, type and wait")
                         .arg(kind, what));
        return std::nullopt;
    }

    QList<OperationDraft> operations(const YAML::Node &value, const YAML::Node &key, const QString &what)
    {
        QList<OperationDraft> result;
        if (value.IsNull())
            return result;
        if (!value.IsSequence()) {
            problem(value, what + QStringLiteral(" operations must be a list, not ") + describe(value), key);
            return result;
        }
        for (std::size_t i = 0; i < value.size(); ++i)
            if (const auto op = operation(value[i], QStringLiteral("%1 operation %2").arg(what).arg(i + 1)))
                result.append(*op);
        return result;
    }

    GeneratorScreen screen(const YAML::Node &node, qsizetype number)
    {
        const QString what = QStringLiteral("screen %1").arg(number);
        GeneratorScreen s;
        mapping(node, what, {
            {QStringLiteral("name"), true,
             [&](auto &k, auto &v) { s.name = text(v, k, what + QStringLiteral(" name"), false).value_or(QString()); }},
            {QStringLiteral("launchArguments"), false,
             [&](auto &k, auto &v) {
                 s.launchArguments = textList(v, k, what + QStringLiteral(" launchArguments"), true).value_or(QStringList());
             }},
            {QStringLiteral("launchWaitSeconds"), false,
             [&](auto &k, auto &v) {
                 s.launchWaitSeconds = seconds(v, k, what + QStringLiteral(" launchWaitSeconds")).value_or(0);
             }},
            {QStringLiteral("operations"), false, [&](auto &k, auto &v) { s.operations = operations(v, k, what); }},
        });
        return s;
    }

    void screens(const YAML::Node &value, const YAML::Node &key, GeneratorConfig &config)
    {
        if (value.IsNull() || (value.IsSequence() && value.size() == 0)) {
            problem(value, QStringLiteral("screens is empty; describe at least one screen"), key);
            return;
        }
        if (!value.IsSequence()) {
            problem(value, QStringLiteral("screens must be a list of screens, not ") + describe(value), key);
            return;
        }
        for (std::size_t i = 0; i < value.size(); ++i)
            config.screens.append(screen(value[i], qsizetype(i) + 1));
    }

    void configuration(const YAML::Node &root, GeneratorConfig &c)
    {
        const auto textField = [this](const char *name, QString *into, ConfigPosition *position = nullptr) {
            return Field{QString::fromLatin1(name), true, [this, name, into, position](auto &k, auto &v) {
                             *into = text(v, k, QString::fromLatin1(name), false).value_or(QString());
                             if (position)
                                 *position = positionOf(v.Mark());
                         }};
        };
        const auto flagField = [this](const char *name, bool *into) {
            return Field{QString::fromLatin1(name), false, [this, name, into](auto &k, auto &v) {
                             *into = flag(v, k, QString::fromLatin1(name)).value_or(*into);
                         }};
        };
        mapping(root, QStringLiteral("the configuration"), {
            textField("appPath", &c.appPath, &c.appPathPosition),
            textField("bundleId", &c.bundleId, &c.bundleIdPosition),
            textField("outputDirectory", &c.outputDirectory),
            flagField("openSimulator", &c.openSimulator),
            flagField("resetAppData", &c.resetAppData),
            {QStringLiteral("launchWaitSeconds"), false,
             [&](auto &k, auto &v) {
                 c.launchWaitSeconds = seconds(v, k, QStringLiteral("launchWaitSeconds")).value_or(c.launchWaitSeconds);
             }},
            {QStringLiteral("devices"), true,
             [&](auto &k, auto &v) {
                 c.devices = requiredTextList(v, k, QStringLiteral("devices"),
                                              QStringLiteral("list at least one simulator by its UDID"),
                                              &c.devicePositions)
                                 .value_or(QStringList());
             }},
            {QStringLiteral("languages"), true,
             [&](auto &k, auto &v) {
                 c.languages = requiredTextList(v, k, QStringLiteral("languages"),
                                                QStringLiteral("list at least one language code, such as en-US"))
                                   .value_or(QStringList());
             }},
            {QStringLiteral("launchArguments"), false,
             [&](auto &k, auto &v) {
                 c.launchArguments = textList(v, k, QStringLiteral("launchArguments"), true).value_or(QStringList());
             }},
            {QStringLiteral("screens"), true, [&](auto &k, auto &v) { screens(v, k, c); }},
        });
    }
};

} // namespace

namespace GeneratorConfigReader {

std::variant<GeneratorConfig, ConfigRefusal> read(const QByteArray &text, const QString &fileName)
{
    YAML::Node root;
    try {
        root = YAML::Load(text.toStdString());
    } catch (const YAML::Exception &error) {
        return ConfigRefusal{fileName, {{positionOf(error.mark), QStringLiteral("syntax error: ") + fromStd(error.msg)}}};
    }
    if (!root.IsDefined() || root.IsNull())
        return ConfigRefusal{fileName, {{{}, QStringLiteral("the file holds no configuration; it needs appPath, "
                                                           "bundleId, outputDirectory, devices, languages and "
                                                           "screens")}}};
    Reader reader;
    GeneratorConfig config;
    reader.configuration(root, config);
    if (!reader.problems.isEmpty())
        return ConfigRefusal{fileName, reader.problems};
    return config;
}

} // namespace GeneratorConfigReader
