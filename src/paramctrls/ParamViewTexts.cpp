// The texts of the views on parameter sets (section "ParamViews").

#include "paramctrls/ParamViewTexts.h"

#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"

#include <cstring>
#include <iterator>

namespace drivewiz {

namespace {

const ParamViewTextDefault kTexts[] = {
    // change marks and the controls' context menu
    {"ChangedMark", "geändert (beim Öffnen: %1)"},
    {"ChangedTip", "Geändert; Wert beim Öffnen: %1"},
    {"MenuReset", "Auf Standardwert zurücksetzen (%1)"},
    {"MenuRevert", "Wert beim Öffnen wiederherstellen (%1)"},
    {"MenuCopy", "Wert kopieren"},
    {"MenuPaste", "Wert einfügen (%1)"},
    {"Empty", "leer"},
    {"OkChanged", "Geänderte Werte (%1):"},
    {"OkMore", "... und %1 weitere"},
    {"TreeCount", "%1 geändert"},
    // the compare view
    {"CompareTitle", "Parameter vergleichen"},
    {"OnlyDifferences", "Nur &Unterschiede"},
    {"Search", "&Suchen:"},
    {"SearchHint", "Koordinate, Name oder Wert"},
    {"Counts", "%1 Parameter, %2 verschieden, %3 angehakt"},
    {"CountsMissing", "%1 fehlen auf einer Seite, %2 nicht gelesen"},
    {"Apply", "Ü&bernehmen"},
    {"Close", "Schließen"},
    {"TickAll", "&Alle anhaken"},
    {"TickNone", "&Keine anhaken"},
    {"ResultWritten", "Werte übernommen: %1"},
    {"ResultNothing", "Keine Werte angehakt; nichts übernommen."},
    {"ResultRefused", "Nicht übernommen:"},
    {"ResultLimited", "Begrenzt:"},
    {"ResultUnknown", "Unbekannte Koordinaten (nicht übernommen):"},
    {"ResultLine", "%1 = %2: %3"},
    {"SideTable", "Tabelle"},
    {"SideDrive", "Antrieb"},
    {"SideDefaults", "Standardwert"},
    {"SideOpening", "Beim Öffnen"},
    {"SideFile", "Datei"},
    {"SideEdited", "Offline geändert"},
    {"SideBefore", "Vorher"},
    {"GoingOnline",
     "Offline geänderte Werte: angehakte Werte werden in den Antrieb geschrieben, die anderen "
     "verworfen."},
    {"FamilyTitle", "Andere Antriebsfamilie"},
    // the journal view
    {"JournalTitle", "Protokoll"},
    {"JournalTime", "Zeit"},
    {"JournalOld", "Alter Wert"},
    {"JournalNew", "Neuer Wert"},
    {"JournalOrigin", "Herkunft"},
    {"JournalMode", "Modus"},
    {"JournalAnswer", "Antwort"},
    {"JournalFilter", "&Koordinate:"},
    {"JournalBack", "&Zurück bis hier..."},
    {"JournalCount", "%1 Einträge"},
    {"JournalSkipped", "%1 unvollständige Zeilen übersprungen"},
    {"JournalEmpty", "Das Protokoll ist leer."},
    {"AnswerKept", "in Tabelle"},
    {"AnswerWritten", "geschrieben"},
    // the host's menus
    {"MenuSets", "&Parametersatz"},
    {"SaveSet", "Satz &speichern..."},
    {"LoadSet", "Satz &laden..."},
    {"CompareDrive", "Mit dem &Antrieb vergleichen"},
    {"CompareDefaults", "Mit den &Standardwerten vergleichen"},
    {"Journal", "&Protokoll..."},
    {"SetFilter", "Parametersätze (*.csv)"},
    {"Saved", "Parametersatz \"%1\" gespeichert (%2 Werte)."},
    {"NoWizard", "Kein Assistent geöffnet."},
};

// QString::arg with several arguments replaces in one pass: an argument holding "%2" stays.
QString substitute(const QString &text, const QString &a1, const QString &a2, const QString &a3)
{
    if (!a3.isNull()) return text.arg(a1, a2, a3);
    if (!a2.isNull()) return text.arg(a1, a2);
    return a1.isNull() ? text : text.arg(a1);
}

} // namespace

const ParamViewTextDefault *paramViewTextDefaults(int *count)
{
    if (count) *count = int(std::size(kTexts));
    return kTexts;
}

QString paramViewText(const TParaTable *table, const char *key, const QString &a1,
                      const QString &a2, const QString &a3)
{
    for (const ParamViewTextDefault &t : kTexts) {
        if (std::strcmp(t.key, key) != 0) continue;
        QString text = QString::fromUtf8(t.german);
        if (table && table->Language() >= 1 && table->LanguageFile())
            text = wizReadString(table->LanguageFile(), QStringLiteral("ParamViews"),
                                 QLatin1String(key), text);
        return substitute(text, a1, a2, a3);
    }
    return QLatin1String(key);
}

} // namespace drivewiz
