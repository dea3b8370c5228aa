#include "LanguageCatalog.h"

const QList<LanguageOption> &LanguageCatalog::options()
{
    static const QList<LanguageOption> catalog = [] {
        const struct { const char *code, *name, *region; } rows[] = {
            {"ar", "Arabic", nullptr},          {"bn", "Bangla", nullptr},
            {"ca", "Catalan", nullptr},         {"zh-Hans", "Chinese", "Simplified"},
            {"zh-Hant", "Chinese", "Traditional"}, {"hr", "Croatian", nullptr},
            {"cs", "Czech", nullptr},           {"da", "Danish", nullptr},
            {"nl-NL", "Dutch", nullptr},        {"en-AU", "English", "Australia"},
            {"en-CA", "English", "Canada"},     {"en-GB", "English", "United Kingdom"},
            {"en-US", "English", "United States"}, {"fi", "Finnish", nullptr},
            {"fr-FR", "French", "France"},      {"fr-CA", "French", "Canada"},
            {"de-DE", "German", "Germany"},     {"el", "Greek", nullptr},
            {"gu", "Gujarati", nullptr},        {"he", "Hebrew", nullptr},
            {"hi", "Hindi", nullptr},           {"hu", "Hungarian", nullptr},
            {"id", "Indonesian", nullptr},      {"it-IT", "Italian", nullptr},
            {"ja-JP", "Japanese", nullptr},     {"kn", "Kannada", nullptr},
            {"ko-KR", "Korean", nullptr},       {"ms", "Malay", nullptr},
            {"ml", "Malayalam", nullptr},       {"mr", "Marathi", nullptr},
            {"nb-NO", "Norwegian", nullptr},    {"or", "Odia", nullptr},
            {"pl-PL", "Polish", nullptr},       {"pt-BR", "Portuguese", "Brazil"},
            {"pt-PT", "Portuguese", "Portugal"}, {"pa", "Punjabi", nullptr},
            {"ro", "Romanian", nullptr},        {"ru-RU", "Russian", nullptr},
            {"sk", "Slovak", nullptr},          {"sl", "Slovenian", nullptr},
            {"es-MX", "Spanish", "Mexico"},     {"es-ES", "Spanish", "Spain"},
            {"sv", "Swedish", nullptr},         {"ta", "Tamil", nullptr},
            {"te", "Telugu", nullptr},          {"th", "Thai", nullptr},
            {"tr", "Turkish", nullptr},         {"uk", "Ukrainian", nullptr},
            {"ur", "Urdu", nullptr},            {"vi", "Vietnamese", nullptr},
        };
        QList<LanguageOption> list;
        for (const auto &row : rows)
            list.append({QString::fromLatin1(row.code), QString::fromLatin1(row.name),
                         row.region ? std::optional(QString::fromLatin1(row.region)) : std::nullopt});
        return list;
    }();
    return catalog;
}

QString LanguageCatalog::label(const QString &code)
{
    for (const LanguageOption &option : options()) {
        if (option.code == code)
            return option.region ? option.name + QStringLiteral(" (") + *option.region + QLatin1Char(')')
                                 : option.name;
    }
    return code;
}
