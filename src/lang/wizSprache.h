#ifndef DRIVEWIZ_LANG_WIZSPRACHE_H
#define DRIVEWIZ_LANG_WIZSPRACHE_H

#include "drivewiz_global.h"

#include <QString>

class QLabel;
class QWidget;

namespace drivewiz {

class IniFile;

// The common strings: texts the components show themselves (messages, captions, unit
// words). They start as the German defaults and are replaced from section "ComStr" of
// the language file. Texts holding "%s" take the parameter's coordinate.

extern DRIVEWIZ_EXPORT QString s_MustBeInteger;        ///< key "s1"
extern DRIVEWIZ_EXPORT QString s_NoValidCoord;         ///< key "s2"
extern DRIVEWIZ_EXPORT QString s_FileInfo1;            ///< key "s3"
extern DRIVEWIZ_EXPORT QString s_ParFileNotFound;      ///< key "s4"
extern DRIVEWIZ_EXPORT QString s_Koordinate;           ///< key "s5"
extern DRIVEWIZ_EXPORT QString s_MustBeANumber;        ///< key "s6"
extern DRIVEWIZ_EXPORT QString s_ValOutOfLims;         ///< key "s7"
extern DRIVEWIZ_EXPORT QString s_ClickForParDesc;      ///< key "s8"
extern DRIVEWIZ_EXPORT QString s_ChoosePar;            ///< key "s9"
extern DRIVEWIZ_EXPORT QString s_InputPar;             ///< key "s10"
extern DRIVEWIZ_EXPORT QString s_ValRange;             ///< key "s11"
extern DRIVEWIZ_EXPORT QString s_DatenTyp;             ///< key "s12"
extern DRIVEWIZ_EXPORT QString s_Info;                 ///< key "s13"
extern DRIVEWIZ_EXPORT QString s_TextNotFound;         ///< key "s14"
extern DRIVEWIZ_EXPORT QString s_NotMoreFound;         ///< key "s15"
extern DRIVEWIZ_EXPORT QString s_TxtCannotFocus;       ///< key "s16"
extern DRIVEWIZ_EXPORT QString s_Cancel;               ///< key "s17"
extern DRIVEWIZ_EXPORT QString s_ModifWillBeLost;      ///< key "s18"
extern DRIVEWIZ_EXPORT QString s_ModifWillRetain;      ///< key "s19"
extern DRIVEWIZ_EXPORT QString s_TerminateWiz;         ///< key "s20"
extern DRIVEWIZ_EXPORT QString s_CancelWiz;            ///< key "s21"
extern DRIVEWIZ_EXPORT QString s_Search;               ///< key "s22"
extern DRIVEWIZ_EXPORT QString s_SearchTextHint;       ///< key "s23"
extern DRIVEWIZ_EXPORT QString s_InputSearchTxt;       ///< key "s24"
extern DRIVEWIZ_EXPORT QString s_Next;                 ///< key "s25"
extern DRIVEWIZ_EXPORT QString s_Back;                 ///< key "s26"
extern DRIVEWIZ_EXPORT QString s_SignalFlow;           ///< key "s27"
extern DRIVEWIZ_EXPORT QString s_ResTlgrLength;        ///< key "s29"
extern DRIVEWIZ_EXPORT QString s_MaxLen;               ///< key "s30"
extern DRIVEWIZ_EXPORT QString s_ParUnknown;           ///< key "s31"
extern DRIVEWIZ_EXPORT QString s_DataTypeI16only;      ///< key "s32"
extern DRIVEWIZ_EXPORT QString s_ScaleReadDoc;         ///< key "s33"
extern DRIVEWIZ_EXPORT QString s_SkalingError;         ///< key "s34"
extern DRIVEWIZ_EXPORT QString s_Default;              ///< key "s35"
extern DRIVEWIZ_EXPORT QString s_ObservePar;           ///< key "s36"
extern DRIVEWIZ_EXPORT QString s_means;                ///< key "s37"
extern DRIVEWIZ_EXPORT QString s_SignalFix0V;          ///< key "s38"
extern DRIVEWIZ_EXPORT QString s_SignalFix24V;         ///< key "s39"
extern DRIVEWIZ_EXPORT QString s_SignalSourceBit;      ///< key "s40"
extern DRIVEWIZ_EXPORT QString s_InParam;              ///< key "s41"
extern DRIVEWIZ_EXPORT QString s_currValue;            ///< key "s42"
extern DRIVEWIZ_EXPORT QString s_DblClckToSource;      ///< key "s43"
extern DRIVEWIZ_EXPORT QString s_BinInput;             ///< key "s44"
extern DRIVEWIZ_EXPORT QString s_Terminal;             ///< key "s45"
extern DRIVEWIZ_EXPORT QString s_OptBoard;             ///< key "s46"
extern DRIVEWIZ_EXPORT QString s_SigInvert;            ///< key "s47"
extern DRIVEWIZ_EXPORT QString s_SignalSourcePar;      ///< key "s48"
extern DRIVEWIZ_EXPORT QString s_Ink;                  ///< key "s49"
extern DRIVEWIZ_EXPORT QString s_Upm;                  ///< key "s50"
extern DRIVEWIZ_EXPORT QString s_nMotor;               ///< key "s51"
extern DRIVEWIZ_EXPORT QString s_Mmotor;               ///< key "s52"
extern DRIVEWIZ_EXPORT QString s_EncRev;               ///< key "s53"
extern DRIVEWIZ_EXPORT QString s_Jges;                 ///< key "s54"
extern DRIVEWIZ_EXPORT QString s_NoMovePossible;       ///< key "s55"
extern DRIVEWIZ_EXPORT QString s_RuckDoku;             ///< key "s57"
extern DRIVEWIZ_EXPORT QString s_StringLen;            ///< key "s58"
extern DRIVEWIZ_EXPORT QString s_No;                   ///< key "s59"
extern DRIVEWIZ_EXPORT QString s_CopyToClipbrd;        ///< key "s60"
extern DRIVEWIZ_EXPORT QString s_FreigabeAus;          ///< key "s61"
extern DRIVEWIZ_EXPORT QString s_ParamInvalid;         ///< key "s62"
extern DRIVEWIZ_EXPORT QString s_ParamFeldbus;         ///< key "s63"
extern DRIVEWIZ_EXPORT QString s_AADataTypeI32Message; ///< key "s64"
extern DRIVEWIZ_EXPORT QString s_AAValueUndefined;     ///< key "s65"
extern DRIVEWIZ_EXPORT QString s_ValAdjusted;          ///< key "s66"
extern DRIVEWIZ_EXPORT QString s_SetToDefault;         ///< key "s67"

/// One common string: its key in section "ComStr", its variable and German default.
struct CommonString
{
    const char *key;
    QString *variable;
    const char *defaultText;
};

/// All common strings in declaration order.
DRIVEWIZ_EXPORT const CommonString *commonStrings(int *count);

/// Puts every common string back to its German default.
DRIVEWIZ_EXPORT void ResetCommonStrings();

// ---- Qt's own texts ----------------------------------------------------------------------
//
// Reading a language file (ReadCommonStrings) also sets the titles of message dialogs from
// its section "Dialog" (keys "Warning", "Error", "Information", "Confirmation"; German
// when missing), chooses Qt's translation of its own texts (Yes, No, Cancel, file
// dialogs) for the file's language, and sends QEvent::LanguageChange to the application,
// which hands it to every window: the library's components translate themselves again.
// ResetCommonStrings does the same for German.

/// The locale of a language: key "Locale" of section "Dialog" when the file has it,
/// else "de" for 1 and "en" for 2; empty for other languages (Qt's English).
DRIVEWIZ_EXPORT QString LanguageLocale(int language, const IniFile *ini);
/// Loads Qt's translation "qtbase_<locale>.qm" into the library's translator (installed
/// once, before any of the host's); an empty locale or a missing file leaves Qt's English.
/// Returns false when the locale is the one in use.
DRIVEWIZ_EXPORT bool SelectQtTranslation(const QString &locale);
/// The locale chosen last (empty: none, Qt's English).
DRIVEWIZ_EXPORT QString QtTranslationLocale();
/// Whether Qt's translation for that locale was found.
DRIVEWIZ_EXPORT bool QtTranslationLoaded();
/// Where Qt's translations are looked for; empty: Qt's own folder (Debian:
/// /usr/share/qt6/translations from qt6-translations-l10n).
DRIVEWIZ_EXPORT void SetQtTranslationsFolder(const QString &folder);
/// Sends QEvent::LanguageChange to the application, as installing a translator does.
DRIVEWIZ_EXPORT void NotifyLanguageChange();

// ---- Language and configuration files ------------------------------------------------

/// Set by a hosting development platform: texts missing in the central language file are
/// written back to it (WriteCommonStrings, WriteControls). False by default.
extern DRIVEWIZ_EXPORT bool WriteWizLang;

/// Names the folder of the language files and of "wiz.cfg" for the whole process, for a
/// host that keeps them elsewhere than the default search finds them. A relative path is
/// taken from the current working folder at the call. An empty text goes back to the
/// default search (below).
DRIVEWIZ_EXPORT void SetConfigFolder(const QString &folder);
/// The folder named by SetConfigFolder, as an absolute path; empty when none is named.
DRIVEWIZ_EXPORT QString ConfigFolder();

/// Full path of the language file "wizling.<language>". With a folder named by
/// SetConfigFolder the file lies there and `central` is false. Otherwise, when "../WizLingua/wizling.1" or
/// "../WizLingua/wizling.0" exists as a file, relative to the current working folder, the
/// central language folder is in use: the result is the cleaned absolute path of
/// "../WizLingua/wizling.<language>" and `central` is true. Otherwise the file lies in
/// the folder of the running program (the current folder when there is no application
/// object) and `central` is false. The language file itself need not exist.
DRIVEWIZ_EXPORT QString GetIniFileName(int language, bool &central);

/// Full path of "wiz.cfg": in the folder of the language files.
DRIVEWIZ_EXPORT QString GetCFGFileName();

/// Fills every common string from section "ComStr": the key's value, or the German
/// default when the key is missing (an empty value counts). A null file changes nothing.
DRIVEWIZ_EXPORT void ReadCommonStrings(const IniFile *ini);

/// Adds every common string whose key is missing in section "ComStr", with its current
/// text, and saves the file. Does so only when WriteWizLang is set and `ini` is the
/// file in the central language folder (and not write-protected); otherwise nothing.
DRIVEWIZ_EXPORT void WriteCommonStrings(IniFile *ini);

/// The value of `ident` in `section`, or `defaultValue` when the key is missing. With no
/// file, or a section or ident that is blank after trimming, the file is not consulted.
DRIVEWIZ_EXPORT QString wizReadString(const IniFile *ini, const QString &section,
                                      const QString &ident, const QString &defaultValue);

/// Sets the label's text to wizReadString(ini, section, label's object name, its text).
/// Nothing happens without a file or label, or while the label is being designed.
DRIVEWIZ_EXPORT void InitLabel(const IniFile *ini, const QString &section, QLabel *label);

/// Translates the child widgets of `container` from `section`, depth first in child
/// order, keyed by object name: "h" + name sets the tool tip, "c" + name the caption or
/// text (the current one is the default), and for a combo box that is not editable
/// (a drop-down list) key name + "_" + i replaces item i when its value is not empty.
///
/// "Caption or text" per widget class: QLabel and QAbstractButton (push, tool, check and
/// radio buttons): text(); QGroupBox: title(); QLineEdit: text(); an editable QComboBox:
/// its edit text; a page of a QTabWidget: its tab text. Other widgets have none and only
/// take the tool tip.
///
/// Unnamed widgets and Qt's internal ones (names starting with "qt_") are not translated
/// but searched for named children; separate windows parented to the container are
/// skipped. Nothing happens without a file or container, with a blank section, or
/// while the container is being designed. `language` is not needed for reading; it is
/// kept for the callers.
DRIVEWIZ_EXPORT void ReadControls(const IniFile *ini, int language, const QString &section,
                                  QWidget *container);

/// The reverse of ReadControls for keys that are missing in the file: writes the tool
/// tip ("h"), the caption ("c") and the items of drop-down lists (name_i) when they are
/// not empty, then saves the file. Texts of line edits and editable combo boxes are
/// values, not captions, and are never written. Does so only under the conditions of
/// WriteCommonStrings and those of ReadControls; otherwise nothing.
DRIVEWIZ_EXPORT void WriteControls(IniFile *ini, int language, const QString &section,
                                   QWidget *container);

} // namespace drivewiz

#endif // DRIVEWIZ_LANG_WIZSPRACHE_H
