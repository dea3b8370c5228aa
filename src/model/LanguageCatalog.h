#pragma once
// The fixed catalogue of App Store locales offered by the language picker.
// Bare language codes and language-region codes are mixed on purpose: these
// are the codes written into projects and handed to the generators.

#include <QList>
#include <QString>
#include <optional>

struct LanguageOption
{
    QString code;
    QString name;
    std::optional<QString> region;
};

class LanguageCatalog
{
public:
    static const QList<LanguageOption> &options();
    // "English (United States)", "Japanese", or the code itself when unknown.
    static QString label(const QString &code);
};
