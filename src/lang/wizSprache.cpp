#include "lang/wizSprache.h"

#include "lang/wizSprache_p.h"
#include "platform/inifile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <iterator>

namespace drivewiz {

QString s_MustBeInteger = QStringLiteral("Wert muss eine ganze Zahl sein!");
QString s_NoValidCoord = QStringLiteral("Keine gültige Koordinate!");
QString s_FileInfo1 = QStringLiteral("Es wird die Datei im Arbeitsverzeichnis verwendet");
QString s_ParFileNotFound = QStringLiteral("Parameterfile nicht gefunden");
QString s_Koordinate = QStringLiteral("Koordinate");
QString s_MustBeANumber = QStringLiteral("Wert muss eine Zahl sein!");
QString s_ValOutOfLims = QStringLiteral("Wert ausserhalb der zulässiger Grenzen");
QString s_ClickForParDesc = QStringLiteral("Klick zur Parameterbeschreibung");
QString s_ChoosePar =
    QStringLiteral("Wählen Sie einen Parameter oder geben Sie eine Parameterkoordinate ein.");
QString s_InputPar = QStringLiteral("Geben Sie einen Parameter (z.B. \"A00\") ein.");
QString s_ValRange = QStringLiteral("Wertebereich");
QString s_DatenTyp = QStringLiteral("Datentyp");
QString s_Info = QStringLiteral("Info");
QString s_TextNotFound = QStringLiteral("Gesuchter Text nicht gefunden!");
QString s_NotMoreFound = QStringLiteral("Keine weiteren Stellen gefunden!");
QString s_TxtCannotFocus =
    QStringLiteral("Gesuchter Text ist bei aktueller Parametrierung nicht fokussierbar");
QString s_Cancel = QStringLiteral("Abbrechen");
QString s_ModifWillBeLost = QStringLiteral("geänderte Werte gehen verloren");
QString s_ModifWillRetain = QStringLiteral("geänderte Werte werden übernommen");
QString s_TerminateWiz = QStringLiteral("Assistenten beenden");
QString s_CancelWiz = QStringLiteral("Assistenten abbrechen");
QString s_Search = QStringLiteral("Suchen");
QString s_SearchTextHint = QStringLiteral("Sucht nach dem links eingegebenen Text");
QString s_InputSearchTxt =
    QStringLiteral("Geben Sie zu suchenden Text ein (z.B. eine Parameterkoordinate)");
QString s_Next = QStringLiteral("Weiter");
QString s_Back = QStringLiteral("Zurück");
QString s_SignalFlow = QStringLiteral("Festlegung und Signalfluss von");
QString s_ResTlgrLength = QStringLiteral("Resultierende Telegramm-Länge");
QString s_MaxLen = QStringLiteral("Max.Länge");
QString s_ParUnknown = QStringLiteral("Parameter unbekannt");
QString s_DataTypeI16only = QStringLiteral("Parameter hat falschen Datentyp (nur I16 zulässig)");
QString s_ScaleReadDoc = QStringLiteral("Zur Skalierung siehe Doku");
QString s_SkalingError = QStringLiteral("Fehler bei Skalierung");
QString s_Default = QStringLiteral("Werkseinstellung");
QString s_ObservePar =
    QStringLiteral("Der Signalpegel kann im folgenden Parameter beobachtet werden");
QString s_means = QStringLiteral("bedeutet");
QString s_SignalFix0V = QStringLiteral("Signal liegt fest am Low-Pegel (\"0V\")");
QString s_SignalFix24V = QStringLiteral("Signal liegt fest am High-Pegel (\"+24V\")");
QString s_SignalSourceBit = QStringLiteral("Als Signalquelle dient Bit");
QString s_InParam = QStringLiteral("im Parameter");
QString s_currValue = QStringLiteral("Aktueller Wert");
QString s_DblClckToSource = QStringLiteral("Mit Doppelklick zur Signalquelle");
QString s_BinInput = QStringLiteral("Binäreingang");
QString s_Terminal = QStringLiteral("Klemme");
QString s_OptBoard = QStringLiteral("Optionsplatine");
QString s_SigInvert = QStringLiteral("Signal wird invertiert");
QString s_SignalSourcePar = QStringLiteral("Als Signalquelle dient Parameter");
QString s_Ink = QStringLiteral("Ink");
QString s_Upm = QStringLiteral("Upm");
QString s_nMotor = QStringLiteral("n-Motor");
QString s_Mmotor = QStringLiteral("M-Motor");
QString s_EncRev = QStringLiteral("Encoder-Umdrehung");
QString s_Jges = QStringLiteral("J-gesamt");
QString s_NoMovePossible = QStringLiteral("Keine Motorbewegung möglich!");
QString s_RuckDoku = QStringLiteral("Rückdokumentation");
QString s_StringLen = QStringLiteral("String. Max. Länge:");
QString s_No = QStringLiteral("Nr.");
QString s_CopyToClipbrd = QStringLiteral("Kopieren in die Zwischenablage");
QString s_FreigabeAus = QStringLiteral("Freigabe muss AUS sein!");
QString s_ParamInvalid = QStringLiteral("Der Parameter %s ist nicht vorhanden!");
QString s_ParamFeldbus = QStringLiteral("Der Parameter %s ist nicht über Feldbus abbildbar!");
QString s_AADataTypeI32Message =
    QStringLiteral("I32-Wert! Ausgabe der oberen 16 Bit. (Wert=Parameter/65536)");
QString s_AAValueUndefined = QStringLiteral("Parameter hat falschen Datentyp. Ausgabe undefiniert");
QString s_ValAdjusted = QStringLiteral("Wert wird angepasst.");
QString s_SetToDefault = QStringLiteral("Wert wird auf Default gesetzt.");

namespace {

const CommonString kCommonStrings[] = {
    {"s1", &s_MustBeInteger, "Wert muss eine ganze Zahl sein!"},
    {"s2", &s_NoValidCoord, "Keine gültige Koordinate!"},
    {"s3", &s_FileInfo1, "Es wird die Datei im Arbeitsverzeichnis verwendet"},
    {"s4", &s_ParFileNotFound, "Parameterfile nicht gefunden"},
    {"s5", &s_Koordinate, "Koordinate"},
    {"s6", &s_MustBeANumber, "Wert muss eine Zahl sein!"},
    {"s7", &s_ValOutOfLims, "Wert ausserhalb der zulässiger Grenzen"},
    {"s8", &s_ClickForParDesc, "Klick zur Parameterbeschreibung"},
    {"s9", &s_ChoosePar, "Wählen Sie einen Parameter oder geben Sie eine Parameterkoordinate ein."},
    {"s10", &s_InputPar, "Geben Sie einen Parameter (z.B. \"A00\") ein."},
    {"s11", &s_ValRange, "Wertebereich"},
    {"s12", &s_DatenTyp, "Datentyp"},
    {"s13", &s_Info, "Info"},
    {"s14", &s_TextNotFound, "Gesuchter Text nicht gefunden!"},
    {"s15", &s_NotMoreFound, "Keine weiteren Stellen gefunden!"},
    {"s16", &s_TxtCannotFocus,
     "Gesuchter Text ist bei aktueller Parametrierung nicht fokussierbar"},
    {"s17", &s_Cancel, "Abbrechen"},
    {"s18", &s_ModifWillBeLost, "geänderte Werte gehen verloren"},
    {"s19", &s_ModifWillRetain, "geänderte Werte werden übernommen"},
    {"s20", &s_TerminateWiz, "Assistenten beenden"},
    {"s21", &s_CancelWiz, "Assistenten abbrechen"},
    {"s22", &s_Search, "Suchen"},
    {"s23", &s_SearchTextHint, "Sucht nach dem links eingegebenen Text"},
    {"s24", &s_InputSearchTxt, "Geben Sie zu suchenden Text ein (z.B. eine Parameterkoordinate)"},
    {"s25", &s_Next, "Weiter"},
    {"s26", &s_Back, "Zurück"},
    {"s27", &s_SignalFlow, "Festlegung und Signalfluss von"},
    {"s29", &s_ResTlgrLength, "Resultierende Telegramm-Länge"},
    {"s30", &s_MaxLen, "Max.Länge"},
    {"s31", &s_ParUnknown, "Parameter unbekannt"},
    {"s32", &s_DataTypeI16only, "Parameter hat falschen Datentyp (nur I16 zulässig)"},
    {"s33", &s_ScaleReadDoc, "Zur Skalierung siehe Doku"},
    {"s34", &s_SkalingError, "Fehler bei Skalierung"},
    {"s35", &s_Default, "Werkseinstellung"},
    {"s36", &s_ObservePar, "Der Signalpegel kann im folgenden Parameter beobachtet werden"},
    {"s37", &s_means, "bedeutet"},
    {"s38", &s_SignalFix0V, "Signal liegt fest am Low-Pegel (\"0V\")"},
    {"s39", &s_SignalFix24V, "Signal liegt fest am High-Pegel (\"+24V\")"},
    {"s40", &s_SignalSourceBit, "Als Signalquelle dient Bit"},
    {"s41", &s_InParam, "im Parameter"},
    {"s42", &s_currValue, "Aktueller Wert"},
    {"s43", &s_DblClckToSource, "Mit Doppelklick zur Signalquelle"},
    {"s44", &s_BinInput, "Binäreingang"},
    {"s45", &s_Terminal, "Klemme"},
    {"s46", &s_OptBoard, "Optionsplatine"},
    {"s47", &s_SigInvert, "Signal wird invertiert"},
    {"s48", &s_SignalSourcePar, "Als Signalquelle dient Parameter"},
    {"s49", &s_Ink, "Ink"},
    {"s50", &s_Upm, "Upm"},
    {"s51", &s_nMotor, "n-Motor"},
    {"s52", &s_Mmotor, "M-Motor"},
    {"s53", &s_EncRev, "Encoder-Umdrehung"},
    {"s54", &s_Jges, "J-gesamt"},
    {"s55", &s_NoMovePossible, "Keine Motorbewegung möglich!"},
    {"s57", &s_RuckDoku, "Rückdokumentation"},
    {"s58", &s_StringLen, "String. Max. Länge:"},
    {"s59", &s_No, "Nr."},
    {"s60", &s_CopyToClipbrd, "Kopieren in die Zwischenablage"},
    {"s61", &s_FreigabeAus, "Freigabe muss AUS sein!"},
    {"s62", &s_ParamInvalid, "Der Parameter %s ist nicht vorhanden!"},
    {"s63", &s_ParamFeldbus, "Der Parameter %s ist nicht über Feldbus abbildbar!"},
    {"s64", &s_AADataTypeI32Message, "I32-Wert! Ausgabe der oberen 16 Bit. (Wert=Parameter/65536)"},
    {"s65", &s_AAValueUndefined, "Parameter hat falschen Datentyp. Ausgabe undefiniert"},
    {"s66", &s_ValAdjusted, "Wert wird angepasst."},
    {"s67", &s_SetToDefault, "Wert wird auf Default gesetzt."},
};

} // namespace

const CommonString *commonStrings(int *count)
{
    if (count) *count = int(std::size(kCommonStrings));
    return kCommonStrings;
}

void ResetCommonStrings()
{
    for (const auto &s : kCommonStrings)
        *s.variable = QString::fromUtf8(s.defaultText);
    detail::applyLanguage(nullptr);
}

bool WriteWizLang = false;

namespace {

const QString kCommonSection = QStringLiteral("ComStr");

// The central folder as seen from the current working folder, without its final "/".
QString centralFolder()
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(QStringLiteral("../WizLingua")));
}

bool centralFolderInUse()
{
    const QDir folder(centralFolder());
    // Like the drive tool's file test: a folder named wizling.1 does not count.
    return QFileInfo(folder.filePath(QStringLiteral("wizling.1"))).isFile() ||
           QFileInfo(folder.filePath(QStringLiteral("wizling.0"))).isFile();
}

QString programFolder()
{
    // Without an application object Qt knows no program folder; the working folder is
    // the best guess then (and keeps the result an absolute path).
    const QString dir =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    return dir.isEmpty() ? QDir::currentPath() : dir;
}

// Folders compare by their real location where they exist, so that a symbolic link or
// "a/../b" does not hide that two paths name the same folder.
QString comparableFolder(const QString &path)
{
    const QFileInfo info(path);
    const QString real = info.canonicalFilePath();
    return real.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : real;
}

QString &namedFolder()
{
    static QString folder;
    return folder;
}

} // namespace

void SetConfigFolder(const QString &folder)
{
    namedFolder() = folder.trimmed().isEmpty()
                        ? QString()
                        : QDir::cleanPath(QDir::current().absoluteFilePath(folder.trimmed()));
}

QString ConfigFolder()
{
    return namedFolder();
}

QString GetIniFileName(int language, bool &central)
{
    const QString name = QStringLiteral("wizling.") + QString::number(language);
    if (!namedFolder().isEmpty()) {
        central = false; // the host's choice, not the translators' central folder
        return namedFolder() + u'/' + name;
    }
    central = centralFolderInUse();
    return (central ? centralFolder() : programFolder()) + u'/' + name;
}

QString GetCFGFileName()
{
    bool central = false;
    return QFileInfo(GetIniFileName(1, central)).path() + QStringLiteral("/wiz.cfg");
}

namespace detail {

bool languageWritesAllowed(const IniFile *ini)
{
    if (!WriteWizLang || !ini || !centralFolderInUse()) return false;
    const QString folder = QFileInfo(ini->path()).absolutePath();
    return comparableFolder(folder) == comparableFolder(centralFolder()) && !ini->isReadOnly();
}

void saveLanguageFile(IniFile *ini)
{
    // Writing back is a help for translators on the development platform: a failed save
    // must not disturb the wizard, so it is not reported.
    if (ini->isModified()) ini->save();
}

} // namespace detail

void ReadCommonStrings(const IniFile *ini)
{
    if (!ini) return;
    for (const auto &s : kCommonStrings) {
        *s.variable = ini->readString(kCommonSection, QString::fromLatin1(s.key),
                                      QString::fromUtf8(s.defaultText));
    }
    detail::applyLanguage(ini);
}

void WriteCommonStrings(IniFile *ini)
{
    if (!detail::languageWritesAllowed(ini)) return;
    for (const auto &s : kCommonStrings) {
        const QString key = QString::fromLatin1(s.key);
        if (!ini->valueExists(kCommonSection, key))
            ini->writeString(kCommonSection, key, *s.variable);
    }
    detail::saveLanguageFile(ini);
}

QString wizReadString(const IniFile *ini, const QString &section, const QString &ident,
                      const QString &defaultValue)
{
    if (!ini || section.trimmed().isEmpty() || ident.trimmed().isEmpty()) return defaultValue;
    return ini->readString(section, ident, defaultValue);
}

} // namespace drivewiz
