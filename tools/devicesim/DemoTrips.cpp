#include "DemoTrips.h"

#include <QLocale>

namespace DemoTrips {

namespace {

QStringList utf8(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *t : texts)
        list.append(QString::fromUtf8(t));
    return list;
}

QList<DemoTrip> makeTrips()
{
    QList<DemoTrip> trips;
    trips.append({QStringLiteral("lisbon"),
                  utf8({"Lisbon", "Lissabon", "Lisbonne", "Lisboa", "Lisboa"}),
                  utf8({"Portugal", "Portugal", "Portugal", "Portugal", "Portugal"}),
                  utf8({"Tiled façades, custard tarts and sunsets from the miradouros.",
                        "Gekachelte Fassaden, Pastéis de Nata und Sonnenuntergänge über den Miradouros.",
                        "Façades en azulejos, pastéis de nata et couchers de soleil sur les miradouros.",
                        "Fachadas de azulejos, pastéis de nata y atardeceres desde los miradores.",
                        "Fachadas de azulejos, pastéis de nata e o pôr do sol nos miradouros."}),
                  utf8({"Alfama", "Belém", "Sintra"}),
                  QDate(2025, 5, 12), 5, 2, 4.8, 120,
                  {QStringLiteral("food"), QStringLiteral("culture")}});
    trips.append({QStringLiteral("kyoto"),
                  utf8({"Kyoto", "Kyoto", "Kyoto", "Kioto", "Quioto"}),
                  utf8({"Japan", "Japan", "Japon", "Japón", "Japão"}),
                  utf8({"Temple gardens, quiet lanes and the best matcha of your life.",
                        "Tempelgärten, stille Gassen und der beste Matcha deines Lebens.",
                        "Jardins de temples, ruelles paisibles et le meilleur matcha de votre vie.",
                        "Jardines de templos, callejuelas tranquilas y el mejor matcha de tu vida.",
                        "Jardins de templos, ruelas tranquilas e o melhor matcha da sua vida."}),
                  utf8({"Fushimi Inari", "Arashiyama", "Gion"}),
                  QDate(2025, 6, 3), 8, 2, 4.9, 160,
                  {QStringLiteral("culture"), QStringLiteral("food")}});
    trips.append({QStringLiteral("reykjavik"),
                  utf8({"Reykjavík", "Reykjavík", "Reykjavík", "Reikiavik", "Reykjavík"}),
                  utf8({"Iceland", "Island", "Islande", "Islandia", "Islândia"}),
                  utf8({"Hot springs, black beaches and the northern lights.",
                        "Heiße Quellen, schwarze Strände und Polarlichter.",
                        "Sources chaudes, plages noires et aurores boréales.",
                        "Aguas termales, playas negras y auroras boreales.",
                        "Fontes termais, praias negras e auroras boreais."}),
                  utf8({"Þingvellir", "Geysir", "Vík"}),
                  QDate(2025, 9, 18), 4, 3, 4.7, 210,
                  {QStringLiteral("mountains"), QStringLiteral("beaches")}});
    trips.append({QStringLiteral("marrakesh"),
                  utf8({"Marrakesh", "Marrakesch", "Marrakech", "Marrakech", "Marrakech"}),
                  utf8({"Morocco", "Marokko", "Maroc", "Marruecos", "Marrocos"}),
                  utf8({"Spice markets, riad courtyards and mint tea at dusk.",
                        "Gewürzmärkte, Riad-Innenhöfe und Minztee in der Dämmerung.",
                        "Souks aux épices, patios de riads et thé à la menthe au crépuscule.",
                        "Mercados de especias, patios de riads y té de menta al anochecer.",
                        "Mercados de especiarias, pátios de riads e chá de hortelã ao entardecer."}),
                  utf8({"Jemaa el-Fna", "Jardin Majorelle", "Atlas"}),
                  QDate(2025, 10, 9), 6, 2, 4.6, 95,
                  {QStringLiteral("food"), QStringLiteral("culture")}});
    trips.append({QStringLiteral("patagonia"),
                  utf8({"Patagonia", "Patagonien", "Patagonie", "Patagonia", "Patagônia"}),
                  utf8({"Argentina", "Argentinien", "Argentine", "Argentina", "Argentina"}),
                  utf8({"Glaciers, granite towers and endless wind.",
                        "Gletscher, Granittürme und endloser Wind.",
                        "Glaciers, tours de granit et vent sans fin.",
                        "Glaciares, torres de granito y viento sin fin.",
                        "Geleiras, torres de granito e vento sem fim."}),
                  utf8({"Perito Moreno", "El Chaltén", "Torres del Paine"}),
                  QDate(2025, 11, 20), 10, 2, 4.9, 140,
                  {QStringLiteral("mountains")}});
    trips.append({QStringLiteral("amalfi"),
                  utf8({"Amalfi Coast", "Amalfiküste", "Côte amalfitaine", "Costa Amalfitana", "Costa Amalfitana"}),
                  utf8({"Italy", "Italien", "Italie", "Italia", "Itália"}),
                  utf8({"Lemon groves, cliffside villages and days on the boat.",
                        "Zitronenhaine, Dörfer an den Klippen und Tage auf dem Boot.",
                        "Citronniers, villages à flanc de falaise et journées en bateau.",
                        "Limoneros, pueblos en los acantilados y días en barco.",
                        "Limoeiros, vilarejos nas falésias e dias de barco."}),
                  utf8({"Positano", "Ravello", "Capri"}),
                  QDate(2026, 4, 14), 7, 4, 4.8, 230,
                  {QStringLiteral("beaches"), QStringLiteral("food")}});
    return trips;
}

QString datePattern(DemoStrings::Language language)
{
    switch (language) {
    case DemoStrings::Language::German: return QStringLiteral("d. MMM");
    case DemoStrings::Language::Portuguese: return QStringLiteral("d 'de' MMM");
    case DemoStrings::Language::French:
    case DemoStrings::Language::Spanish: return QStringLiteral("d MMM");
    case DemoStrings::Language::English: break;
    }
    return QStringLiteral("MMM d");
}

} // namespace

const QList<DemoTrip> &all()
{
    static const QList<DemoTrip> trips = makeTrips();
    return trips;
}

const DemoTrip *find(const QString &id)
{
    for (const DemoTrip &t : all())
        if (t.id == id)
            return &t;
    return nullptr;
}

QList<const DemoTrip *> search(const QString &query, DemoStrings::Language language)
{
    const QString q = query.trimmed();
    QList<const DemoTrip *> found;
    if (q.isEmpty())
        return found;
    for (const DemoTrip &t : all()) {
        bool match = t.cityIn(language).contains(q, Qt::CaseInsensitive)
            || t.countryIn(language).contains(q, Qt::CaseInsensitive);
        for (const QString &category : t.categories) {
            const QByteArray key = "category." + category.toLatin1();
            match = match || DemoStrings::text(language, key.constData()).compare(q, Qt::CaseInsensitive) == 0;
        }
        if (match)
            found.append(&t);
    }
    return found;
}

QString dateRange(const DemoTrip &trip, DemoStrings::Language language, const QString &locale)
{
    const QLocale l(locale);
    const QString pattern = datePattern(language);
    return l.toString(trip.start, pattern) + QStringLiteral(" – ") + l.toString(trip.start.addDays(trip.nights), pattern);
}

} // namespace DemoTrips
