#pragma once
// The demo app's user-interface texts in its five translations. The layout
// never depends on the language: only the words change, so the same screen
// in two languages stays close in a coarse picture comparison.

#include <QString>
#include <QStringList>

namespace DemoStrings {

enum class Language { English, German, French, Spanish, Portuguese };

inline const QString appDisplayName = QStringLiteral("Trips Caf\u00e9");

// The translation an app launched with -AppleLanguages (code) shows; codes
// without a translation fall back to English, as a real app does.
Language language(const QString &code);
// The .lproj folder names of the demo bundle (Base included).
QStringList bundleLocalizations();

// The text for `key` in `language`; the key itself when it is unknown.
QString text(Language language, const char *key);

} // namespace DemoStrings
