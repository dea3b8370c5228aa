// The localization check's rule: only letter words count, and a screenshot
// whose words are (almost) those of the first language looks unlocalized.

#include "TestSupport.h"

#include "generation/LocalizationCheck.h"

#include <QTest>

class LocalizationCheckTest : public QObject
{
    Q_OBJECT

private slots:
    void letterWords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("words");
        QTest::newRow("case and punctuation") << "My Trips!\nUPCOMING, (saved)" << QStringList{"my", "trips", "upcoming", "saved"};
        QTest::newRow("numbers, dates, times, prices") << "12:30 3rd 2026-11-23 $4.99 4,99\u00a0\u20ac 1.234 10%"
                                                       << QStringList{};
        QTest::newRow("words beside numbers stay") << "3 nights \u00b7 2 travellers" << QStringList{"nights", "travellers"};
        QTest::newRow("inner punctuation splits") << "Wi-Fi l'h\u00f4tel" << QStringList{"wi", "fi", "h\u00f4tel"};
        QTest::newRow("dates glued to words") << "Japan:6A 3-6H11 «Jun" << QStringList{"japan", "jun"};
        QTest::newRow("single letters are noise") << "a I x | \u00b7" << QStringList{};
        QTest::newRow("other scripts") << "\u65c5\u884c \u041f\u043e\u0435\u0437\u0434\u043a\u0438"
                                       << QStringList{"\u65c5\u884c", "\u043f\u043e\u0435\u0437\u0434\u043a\u0438"};
        QTest::newRow("case folding") << "\u00c9T\u00c9 \u00e9t\u00e9" << QStringList{"\u00e9t\u00e9", "\u00e9t\u00e9"};
        QTest::newRow("empty screen") << " \n " << QStringList{};
    }
    void letterWords()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, words);
        QCOMPARE(LocalizationCheck::letterWords(text), words);
    }

    void looksUnlocalized_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("firstLanguage");
        QTest::addColumn<bool>("same");
        const QString trips = "9:41 My Trips UPCOMING Lisbon 12 Mar 3 nights \u00b7 2 travellers Kyoto Trips Explore Saved Settings";
        QTest::newRow("identical") << trips << trips << true;
        QTest::newRow("other dates and prices only")
            << "9:41 My Trips UPCOMING Lisbon 3/12 5 nights \u00b7 1 travellers Kyoto Trips Explore Saved Settings"
            << trips << true;
        QTest::newRow("other case and punctuation") << "my trips: upcoming, lisbon! kyoto. nights travellers trips explore saved settings"
                                                    << trips << true;
        QTest::newRow("one misread word") << "My Trlps UPCOMING Lisbon nights travellers Kyoto Trips Explore Saved Settings"
                                          << trips << true;
        QTest::newRow("translated, same place names")
            << "9:41 Meine Reisen BEVORSTEHEND Lisbon 12. M\u00e4rz 3 N\u00e4chte \u00b7 2 Reisende Kyoto Reisen Entdecken Gemerkt Einstellungen"
            << trips << false;
        QTest::newRow("month names of one locale only")
            << "My Trips UPCOMING Lisbon Portugal 5H 12-5A 17 nights travellers Kyoto Japan:6A 3-6H11 Trips Explore"
            << "My Trips UPCOMING Lisbon Portugal May 12 - May 17 nights travellers Kyoto Japan «Jun 3 -Jun11 Explore"
            << true;
        QTest::newRow("both without words") << "9:41 12 3" << "9:41 14" << true;
        QTest::newRow("words against none") << "Hallo Welt" << "" << false;
        QTest::newRow("a few shared words of many") << "Settings Einstellungen Sprache Konto" << "Settings Language Account Help"
                                                    << false;
    }
    void looksUnlocalized()
    {
        QFETCH(QString, screen);
        QFETCH(QString, firstLanguage);
        QFETCH(bool, same);
        QCOMPARE(LocalizationCheck::looksUnlocalized(LocalizationCheck::letterWords(screen),
                                                     LocalizationCheck::letterWords(firstLanguage)),
                 same);
    }

    void warningTextNamesBothLanguages()
    {
        QCOMPARE(LocalizationCheck::warningText("ja-JP", "iPhone-15-Pro/01-trips.png", "en-US"),
                 QString("ja-JP iPhone-15-Pro/01-trips.png looks the same as en-US: is the app localized for ja-JP?"));
    }
};

VANTREL_TEST(LocalizationCheckTest);
#include "LocalizationCheckTest.moc"
