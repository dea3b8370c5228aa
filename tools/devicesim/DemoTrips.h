#pragma once
// The trips and saved places the demo app shows, with their translated
// names. Each trip has a scenery (a painted "photo") of its own colours.

#include "DemoStrings.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

struct DemoTrip
{
    QString id;           // "lisbon"; used in screen keys such as detail:lisbon
    QStringList city;     // per language, in DemoStrings::Language order
    QStringList country;
    QStringList overview;
    QStringList landmarks; // proper names, the same in every language
    QDate start;
    int nights = 0;
    int travellers = 0;
    double rating = 0;
    int pricePerNight = 0; // in the locale's currency, for show
    QStringList categories; // category keys of the Explore tiles

    QString cityIn(DemoStrings::Language l) const { return city.value(int(l)); }
    QString countryIn(DemoStrings::Language l) const { return country.value(int(l)); }
    QString overviewIn(DemoStrings::Language l) const { return overview.value(int(l)); }
};

namespace DemoTrips {
const QList<DemoTrip> &all();
const DemoTrip *find(const QString &id);
// Trips whose city or country contains `query` (ignoring case), or whose
// category is named exactly by it, in `language`.
QList<const DemoTrip *> search(const QString &query, DemoStrings::Language language);
// "12 May – 17 May" in the formats of `locale` (an AppleLocale such as de_DE).
QString dateRange(const DemoTrip &trip, DemoStrings::Language language, const QString &locale);
}
