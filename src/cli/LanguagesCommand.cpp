// vantrel languages: the project's languages and the catalogue to pick from.

#include "Command.h"

#include "model/LanguageCatalog.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

void printLanguages(CommandContext &c, const QStringList &codes, bool json)
{
    if (json) {
        QJsonArray array;
        for (const QString &code : codes)
            array.append(QJsonObject{{QStringLiteral("code"), code}, {QStringLiteral("label"), LanguageCatalog::label(code)}});
        c.printJson(array);
        return;
    }
    for (const QString &code : codes)
        c.out << code.leftJustified(9) << " " << LanguageCatalog::label(code) << "\n";
}

int runLanguages(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    const QString action = c.arguments.value(0);
    if (action.isEmpty()) {
        printLanguages(c, c.model.project().languages, json);
        return 0;
    }
    if (action == QLatin1String("catalog") && c.arguments.size() == 1) {
        QStringList codes;
        for (const LanguageOption &option : LanguageCatalog::options())
            codes.append(option.code);
        printLanguages(c, codes, json);
        return 0;
    }
    if (action == QLatin1String("toggle") && c.arguments.size() == 2) {
        c.model.toggleLanguage(c.arguments.at(1));
        printLanguages(c, c.model.project().languages, json);
        return 0;
    }
    if (action == QLatin1String("add") && c.arguments.size() >= 2) {
        c.model.addCustomLanguage(c.arguments.mid(1).join(QLatin1Char(' ')));
        printLanguages(c, c.model.project().languages, json);
        return 0;
    }
    return c.usageError(QStringLiteral("Usage: vantrel languages [--json] | catalog | toggle CODE | add TEXT"));
}

} // namespace

VANTREL_COMMAND({QStringLiteral("languages"),
                 QStringLiteral("languages [--json] | languages catalog | languages toggle CODE | languages add TEXT"),
                 QStringLiteral("Without arguments, lists the project's languages in order with their labels.\n"
                                "  catalog      the 50 App Store locales that can be chosen\n"
                                "  toggle CODE  adds CODE at the end, or removes it when present\n"
                                "  add TEXT     adds a custom locale code exactly as typed"),
                 runLanguages, false});
