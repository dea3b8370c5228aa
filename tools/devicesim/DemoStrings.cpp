#include "DemoStrings.h"

#include <QHash>

namespace DemoStrings {

namespace {

struct Entry
{
    const char *key;
    const char *english;
    const char *german;
    const char *french;
    const char *spanish;
    const char *portuguese;
};

// clang-format off
const Entry entries[] = {
    {"tab.trips", "Trips", "Reisen", "Voyages", "Viajes", "Viagens"},
    {"tab.explore", "Explore", "Entdecken", "Explorer", "Explorar", "Explorar"},
    {"tab.saved", "Saved", "Gemerkt", "Favoris", "Guardados", "Salvos"},
    {"tab.settings", "Settings", "Einstellungen", "Réglages", "Ajustes", "Ajustes"},
    {"title.trips", "My Trips", "Meine Reisen", "Mes voyages", "Mis viajes", "Minhas viagens"},
    {"title.explore", "Explore", "Entdecken", "Explorer", "Explorar", "Explorar"},
    {"title.saved", "Saved Places", "Gemerkte Orte", "Lieux favoris", "Guardados", "Lugares salvos"},
    {"title.settings", "Settings", "Einstellungen", "Réglages", "Ajustes", "Ajustes"},
    {"trips.upcoming", "UPCOMING", "BEVORSTEHEND", "À VENIR", "PRÓXIMOS", "PRÓXIMAS"},
    {"trips.nights", "%1 nights · %2 travellers", "%1 Nächte · %2 Reisende", "%1 nuits · %2 voyageurs",
     "%1 noches · %2 viajeros", "%1 noites · %2 viajantes"},
    {"detail.overview", "Overview", "Überblick", "Aperçu", "Resumen", "Visão geral"},
    {"detail.itinerary", "Itinerary", "Reiseplan", "Itinéraire", "Itinerario", "Roteiro"},
    {"detail.day", "Day %1", "Tag %1", "Jour %1", "Día %1", "Dia %1"},
    {"detail.book", "Book stay", "Unterkunft buchen", "Réserver le séjour", "Reservar estancia", "Reservar estadia"},
    {"detail.perNight", "from %1 / night", "ab %1 / Nacht", "dès %1 / nuit", "desde %1 / noche", "a partir de %1 / noite"},
    {"explore.placeholder", "Cities, places, dishes", "Städte, Orte, Gerichte", "Villes, lieux, plats",
     "Ciudades, lugares, platos", "Cidades, lugares, pratos"},
    {"explore.categories", "Popular categories", "Beliebte Kategorien", "Catégories populaires",
     "Categorías populares", "Categorias populares"},
    {"explore.cancel", "Cancel", "Abbrechen", "Annuler", "Cancelar", "Cancelar"},
    {"explore.results", "Results", "Ergebnisse", "Résultats", "Resultados", "Resultados"},
    {"explore.noResults", "No results for “%1”", "Keine Ergebnisse für „%1“", "Aucun résultat pour « %1 »",
     "No hay resultados para «%1»", "Nenhum resultado para “%1”"},
    {"category.beaches", "Beaches", "Strände", "Plages", "Playas", "Praias"},
    {"category.mountains", "Mountains", "Berge", "Montagnes", "Montañas", "Montanhas"},
    {"category.food", "Food & Drink", "Essen & Trinken", "Cuisine", "Gastronomía", "Gastronomia"},
    {"category.culture", "Museums", "Museen", "Musées", "Museos", "Museus"},
    {"saved.count", "%1 saved places", "%1 gemerkte Orte", "%1 lieux enregistrés", "%1 lugares guardados",
     "%1 lugares salvos"},
    {"saved.nearby", "Nearby now", "Gerade in der Nähe", "À proximité", "Cerca de ti", "Perto de você"},
    {"settings.general", "GENERAL", "ALLGEMEIN", "GÉNÉRAL", "GENERAL", "GERAL"},
    {"settings.about", "ABOUT", "INFO", "À PROPOS", "INFORMACIÓN", "SOBRE"},
    {"settings.notifications", "Notifications", "Mitteilungen", "Notifications", "Notificaciones", "Notificações"},
    {"settings.currency", "Currency", "Währung", "Devise", "Moneda", "Moeda"},
    {"settings.units", "Distance units", "Entfernungen", "Distances", "Distancias", "Distâncias"},
    {"settings.offline", "Offline maps", "Offline-Karten", "Cartes hors ligne", "Mapas sin conexión", "Mapas offline"},
    {"settings.version", "Version", "Version", "Version", "Versión", "Versão"},
    {"settings.privacy", "Privacy Policy", "Datenschutz", "Confidentialité", "Privacidad", "Privacidade"},
    {"settings.rate", "Rate Trips Café", "Trips Café bewerten", "Noter Trips Café", "Valorar Trips Café",
     "Avaliar Trips Café"},
    {"settings.member", "Explorer since 2021", "Entdeckerin seit 2021", "Exploratrice depuis 2021",
     "Exploradora desde 2021", "Exploradora desde 2021"},
    {"settings.countries", "countries", "Länder", "pays", "países", "países"},
    {"settings.cities", "cities", "Städte", "villes", "ciudades", "cidades"},
    {"settings.days", "days away", "Reisetage", "jours de voyage", "días de viaje", "dias de viagem"},
    {"premium.title", "Go Premium", "Premium holen", "Passez à Premium", "Hazte Premium", "Seja Premium"},
    {"premium.body", "Offline maps, price alerts and unlimited trips.",
     "Offline-Karten, Preisalarme und unbegrenzte Reisen.",
     "Cartes hors ligne, alertes de prix et voyages illimités.",
     "Mapas sin conexión, alertas de precios y viajes ilimitados.",
     "Mapas offline, alertas de preço e viagens ilimitadas."},
    {"premium.cta", "Try 7 days free", "7 Tage gratis testen", "Essai gratuit de 7 jours", "Prueba 7 días gratis",
     "Teste 7 dias grátis"},
    {"premium.later", "Not now", "Nicht jetzt", "Plus tard", "Ahora no", "Agora não"},
    {"keyboard.space", "space", "Leerzeichen", "espace", "espacio", "espaço"},
    {"keyboard.search", "search", "Suchen", "rechercher", "buscar", "buscar"},
};
// clang-format on

const QHash<QString, const Entry *> &index()
{
    static const QHash<QString, const Entry *> table = [] {
        QHash<QString, const Entry *> t;
        for (const Entry &e : entries)
            t.insert(QString::fromLatin1(e.key), &e);
        return t;
    }();
    return table;
}

} // namespace

Language language(const QString &code)
{
    const QString base = code.trimmed().section(QLatin1Char('-'), 0, 0).section(QLatin1Char('_'), 0, 0).toLower();
    if (base == QLatin1String("de"))
        return Language::German;
    if (base == QLatin1String("fr"))
        return Language::French;
    if (base == QLatin1String("es"))
        return Language::Spanish;
    if (base == QLatin1String("pt"))
        return Language::Portuguese;
    return Language::English;
}

QStringList bundleLocalizations()
{
    return {QStringLiteral("Base"), QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("fr"),
            QStringLiteral("es"), QStringLiteral("pt-BR")};
}

QString text(Language language, const char *key)
{
    const Entry *e = index().value(QString::fromLatin1(key));
    if (!e)
        return QString::fromLatin1(key);
    switch (language) {
    case Language::German: return QString::fromUtf8(e->german);
    case Language::French: return QString::fromUtf8(e->french);
    case Language::Spanish: return QString::fromUtf8(e->spanish);
    case Language::Portuguese: return QString::fromUtf8(e->portuguese);
    case Language::English: break;
    }
    return QString::fromUtf8(e->english);
}

} // namespace DemoStrings
