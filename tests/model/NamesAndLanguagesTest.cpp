// Safe path components and the language list.

#include "TestSupport.h"

#include "model/AppModel.h"
#include "model/LanguageCatalog.h"
#include "model/PathSanitizer.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class NamesAndLanguagesTest : public QObject
{
    Q_OBJECT

private slots:
    void sanitizer_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("expected");
        QTest::newRow("cyrillic") << QString("Мой проект!!") << QString("Мой-проект");
        QTest::newRow("parent dir") << QString("../") << QString("capture");
        QTest::newRow("double blank") << QString("a  b") << QString("a-b");
        QTest::newRow("dashes") << QString("--x--") << QString("x");
        QTest::newRow("slashes") << QString("a/b\\c") << QString("a-b-c");
        QTest::newRow("control chars") << QString("a\nb\tc\x01") << QString("a-b-c");
        QTest::newRow("dots kept inside") << QString("v1.2_final") << QString("v1.2_final");
        QTest::newRow("leading dots") << QString("...hidden") << QString("hidden");
        QTest::newRow("combining mark") << QString("e\u0301t\u00e9") << QString("e\u0301t\u00e9");
        QTest::newRow("emoji only") << QString(300, QChar(0x2728)) << QString("capture");
        QTest::newRow("astral emoji between") << QString::fromUtf8("a\xF0\x9F\x98\x80" "b") << QString("a-b");
        QTest::newRow("empty") << QString() << QString("capture");
    }

    void sanitizer()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        QCOMPARE(PathSanitizer::component(input), expected);
    }

    // File systems count bytes: long names are cut by their UTF-8 length,
    // never inside a character.
    void sanitizerCapsLongNamesByBytes_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<int>("characters");
        QTest::newRow("ascii") << QString(400, QChar('a')) << 200;
        QTest::newRow("cyrillic, 2 bytes") << QString(400, QChar(0x0416)) << 100;
        QTest::newRow("japanese, 3 bytes") << QString(120, QChar(0x65E5)) << 66;
        QTest::newRow("astral, 4 bytes") << QString::fromUcs4(U"\U00020000").repeated(80) << 100; // 50 letters
        QTest::newRow("letter with mark") << QString("e\u0301").repeated(120) << 132; // 66 letters, 3 bytes each
    }

    void sanitizerCapsLongNamesByBytes()
    {
        QFETCH(QString, input);
        QFETCH(int, characters);
        const QString result = PathSanitizer::component(input);
        QVERIFY(result.toUtf8().size() <= PathSanitizer::maximumBytes);
        QCOMPARE(result, input.left(characters));
        // Checkpoint images take the same cut; a whole project under such a
        // name is SharedWorkspaceCommandsTest::longJapaneseProjectNameWorksEverywhere.
        QVERIFY(AppModel::checkpointFileName(100, input).toUtf8().size() <= 255);
    }

    void catalogue()
    {
        // Every option in the order offered, each as its label shows it.
        const QStringList expected{
            "ar Arabic", "bn Bangla", "ca Catalan", "zh-Hans Chinese (Simplified)",
            "zh-Hant Chinese (Traditional)", "hr Croatian", "cs Czech", "da Danish", "nl-NL Dutch",
            "en-AU English (Australia)", "en-CA English (Canada)", "en-GB English (United Kingdom)",
            "en-US English (United States)", "fi Finnish", "fr-FR French (France)", "fr-CA French (Canada)",
            "de-DE German (Germany)", "el Greek", "gu Gujarati", "he Hebrew", "hi Hindi", "hu Hungarian",
            "id Indonesian", "it-IT Italian", "ja-JP Japanese", "kn Kannada", "ko-KR Korean", "ms Malay",
            "ml Malayalam", "mr Marathi", "nb-NO Norwegian", "or Odia", "pl-PL Polish",
            "pt-BR Portuguese (Brazil)", "pt-PT Portuguese (Portugal)", "pa Punjabi", "ro Romanian",
            "ru-RU Russian", "sk Slovak", "sl Slovenian", "es-MX Spanish (Mexico)", "es-ES Spanish (Spain)",
            "sv Swedish", "ta Tamil", "te Telugu", "th Thai", "tr Turkish", "uk Ukrainian", "ur Urdu",
            "vi Vietnamese"};
        QStringList offered;
        for (const LanguageOption &option : LanguageCatalog::options())
            offered.append(option.code + " " + LanguageCatalog::label(option.code));
        QCOMPARE(offered, expected);
        QCOMPARE(LanguageCatalog::label("en-US"), QString("English (United States)"));
        QCOMPARE(LanguageCatalog::label("ja-JP"), QString("Japanese"));
        QCOMPARE(LanguageCatalog::label("zh-Hant"), QString("Chinese (Traditional)"));
        QCOMPARE(LanguageCatalog::label("xx-YY"), QString("xx-YY"));
        QCOMPARE(LanguageCatalog::label("EN-US"), QString("EN-US"));
    }

    void editingLanguagesSavesInSelectionOrder()
    {
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        model.loadSavedProject();
        model.toggleLanguage("en-US");
        QVERIFY(model.project().languages.isEmpty());
        model.toggleLanguage("pt-BR");
        model.addCustomLanguage("  de-DE \n");
        model.addCustomLanguage("de-DE");
        model.addCustomLanguage("DE-de");
        model.addCustomLanguage("   ");
        model.toggleLanguage("ar");
        QCOMPARE(model.project().languages, (QStringList{"pt-BR", "de-DE", "DE-de", "ar"}));

        AppModel reloaded(root.path(), std::make_unique<ScriptedPlatformServices>());
        reloaded.loadSavedProject();
        QCOMPARE(reloaded.project().languages, model.project().languages);
    }
};

VANTREL_TEST(NamesAndLanguagesTest);
#include "NamesAndLanguagesTest.moc"
