#include "PlistDescription.h"

#include <QVariantList>
#include <QVariantMap>

namespace PlistDescription {

namespace {

QString indent(int level)
{
    return QString(level * 4, QLatin1Char(' '));
}

bool isPlainWord(const QString &s)
{
    if (s.isEmpty())
        return false;
    for (const QChar c : s)
        if (!(c.unicode() < 0x80 && (c.isLetterOrNumber() || c == QLatin1Char('_'))))
            return false;
    return true;
}

QString value(const QVariant &v, int level);

QString dictionary(const QVariantMap &map, int level)
{
    QString out = QStringLiteral("{\n");
    for (auto it = map.begin(); it != map.end(); ++it)
        out += indent(level + 1) + quoted(it.key()) + QStringLiteral(" = ") + value(it.value(), level + 1) + QStringLiteral(";\n");
    return out + indent(level) + QLatin1Char('}');
}

QString array(const QVariantList &list, int level)
{
    QStringList items;
    for (const QVariant &v : list)
        items.append(indent(level + 1) + value(v, level + 1));
    QString out = QStringLiteral("(\n");
    if (!items.isEmpty())
        out += items.join(QStringLiteral(",\n")) + QLatin1Char('\n');
    return out + indent(level) + QLatin1Char(')');
}

// A nested collection starts on its key's line, after its own indentation.
QString value(const QVariant &v, int level)
{
    if (v.typeId() == QMetaType::QVariantMap)
        return (level > 0 ? indent(level) : QString()) + dictionary(v.toMap(), level);
    if (v.typeId() == QMetaType::QVariantList || v.typeId() == QMetaType::QStringList)
        return (level > 0 ? indent(level) : QString()) + array(v.toList(), level);
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    return quoted(v.toString());
}

} // namespace

QString quoted(const QString &s)
{
    if (isPlainWord(s))
        return s;
    QString out = QStringLiteral("\"");
    for (const QChar c : s) {
        const ushort u = c.unicode();
        if (c == QLatin1Char('"'))
            out += QStringLiteral("\\\"");
        else if (c == QLatin1Char('\\'))
            out += QStringLiteral("\\\\");
        else if (c == QLatin1Char('\n'))
            out += QStringLiteral("\\n");
        else if (c == QLatin1Char('\t'))
            out += QStringLiteral("\\t");
        else if (u < 0x20 || u >= 0x7f) // UTF-16 units, so a surrogate pair gives two escapes
            out += QStringLiteral("\\U%1").arg(u, 4, 16, QLatin1Char('0'));
        else
            out += c;
    }
    return out + QLatin1Char('"');
}

QString text(const QVariant &v)
{
    return value(v, 0);
}

} // namespace PlistDescription
