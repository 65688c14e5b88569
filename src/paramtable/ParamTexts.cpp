// The texts of parameter sets, comparison, undo and the journal (section "ParamSets").

#include "paramtable/ParamTexts.h"

#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"

#include <cstring>

namespace drivewiz {

namespace {

const ParamSetTextDefault kTexts[] = {
    // columns and states of the comparison
    {"ColKoordinate", "Koordinate"},
    {"ColName", "Name"},
    {"ColThis", "Dieser Wert"},
    {"ColOther", "Anderer Wert"},
    {"ColUnit", "Einheit"},
    {"Missing", "(fehlt)"},
    {"NotRead", "(nicht gelesen)"},
    {"StateSame", "gleich"},
    {"StateDifferent", "verschieden"},
    {"StateMissingHere", "fehlt hier"},
    {"StateMissingThere", "fehlt dort"},
    {"StateNotRead", "nicht gelesen"},
    // who wrote, in the journal view
    {"OriginTyped", "Eingabe"},
    {"OriginReset", "Standardwert"},
    {"OriginRevert", "Wert beim Öffnen"},
    {"OriginUndo", "Rückgängig"},
    {"OriginRedo", "Wiederholen"},
    {"OriginApply", "Übernahme"},
    {"OriginHost", "Host-Programm"},
    {"ModeOffline", "offline"},
    {"ModeOnline", "online"},
    {"ModeReadBack", "Rückdoku"},
    // undo steps
    {"Undo", "Rückgängig"},
    {"Redo", "Wiederholen"},
    {"StepTyped", "Eingabe %1"},
    {"StepReset", "%1 auf Standardwert"},
    {"StepRevert", "%1 auf Wert beim Öffnen"},
    {"StepApply", "%1 Werte übernehmen"},
    // why a value was not written
    {"RefusedUnknown", "Parameter unbekannt"},
    {"RefusedReadOnly", "Parameter ist schreibgeschützt"},
    {"RefusedLevel", "Benutzerlevel zu niedrig (nötig: %1)"},
    {"RefusedReadBack", "Im Rückdoku-Modus wird nichts geschrieben"},
    {"RefusedNumber", "\"%1\" ist keine Zahl"},
    {"RefusedSelection", "\"%1\" ist in der Auswahlliste nicht vorhanden"},
    {"RefusedLength", "Text zu lang (höchstens %1 Zeichen)"},
    {"RefusedNotRead", "Wert wurde nicht gelesen"},
    {"RefusedEnable", "Freigabe muss AUS sein!"},
    {"RefusedHost", "Vom Antrieb abgelehnt (Code %1)"},
    {"Limited", "auf %1 begrenzt (%2 .. %3)"},
    // set files
    {"FileLine", "%1, Zeile %2: %3"},
    {"FileWhole", "%1: %2"},
    {"ErrOpen", "Datei kann nicht gelesen werden (%1)"},
    {"ErrEmpty", "Datei ist leer"},
    {"ErrTooLarge", "Datei ist größer als %1 MB; ein Parametersatz ist nie so groß"},
    {"ErrUtf16", "Datei ist UTF-16-kodiert; bitte als UTF-8 oder Windows-1252 speichern"},
    {"ErrBinary", "kein Text (Steuerzeichen oder NUL-Bytes)"},
    {"ErrTitle", "Titelzeile ohne die Spalten \"Koordinate\" und \"Wert\""},
    {"ErrQuote", "Anführungszeichen nicht geschlossen"},
    {"ErrFields", "%1 Felder statt %2"},
    {"ErrKoordinate", "\"%1\" ist keine Koordinate"},
    {"ErrDuplicate", "%1 steht doppelt (zuerst in Zeile %2)"},
    {"ErrLineBreak",
     "Der Wert von %1 enthält einen Zeilenumbruch und kann nicht gespeichert werden"},
    {"ErrWrite", "Datei \"%1\" kann nicht geschrieben werden (%2)"},
    {"FamilyMismatch",
     "Der Parametersatz gehört zur Antriebsfamilie \"%1\", dieser Antrieb zu \"%2\". Trotzdem "
     "vergleichen?"},
    // the journal
    {"JournalFailed",
     "Das Protokoll \"%1\" kann nicht geschrieben werden (%2). Eingaben bleiben möglich, werden "
     "aber nicht protokolliert."},
};

} // namespace

const ParamSetTextDefault *paramSetTextDefaults(int *count)
{
    if (count) *count = int(std::size(kTexts));
    return kTexts;
}

QString paramSetText(const TParaTable *table, const char *key)
{
    for (const ParamSetTextDefault &t : kTexts) {
        if (std::strcmp(t.key, key) != 0) continue;
        const QString german = QString::fromUtf8(t.german);
        if (!table || table->Language() < 1 || !table->LanguageFile()) return german;
        return wizReadString(table->LanguageFile(), QStringLiteral("ParamSets"), QLatin1String(key),
                             german);
    }
    return QLatin1String(key);
}

QString paramSetText(const TParaTable *table, const char *key, const QString &a1, const QString &a2,
                     const QString &a3)
{
    QString text = paramSetText(table, key);
    // One pass, so that an argument holding "%2" is not replaced again.
    const QString args[] = {a1, a2, a3};
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('%') && i + 1 < text.size() && text.at(i + 1) >= QLatin1Char('1') &&
            text.at(i + 1) <= QLatin1Char('3')) {
            out += args[text.at(i + 1).unicode() - '1'];
            ++i;
        } else {
            out += c;
        }
    }
    return out;
}

} // namespace drivewiz
