#include "NaturalOrder.h"

#include <QCollator>

namespace {

QCollator naturalCollator()
{
    // Qt's C locale compares code units and ignores the numeric mode, so a
    // bare environment sorts as English does.
    QLocale locale;
    if (locale.language() == QLocale::C)
        locale = QLocale(QLocale::English, QLocale::UnitedStates);
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace

int NaturalOrder::compare(const QString &a, const QString &b)
{
    static const QCollator collator = naturalCollator();
    return collator.compare(a, b);
}
