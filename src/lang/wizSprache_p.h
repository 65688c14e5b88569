#ifndef DRIVEWIZ_LANG_WIZSPRACHE_P_H
#define DRIVEWIZ_LANG_WIZSPRACHE_P_H

namespace drivewiz {

class IniFile;

namespace detail {

/// True when texts may be written back to `ini`: WriteWizLang is set, the central
/// language folder is in use, `ini` lies in it and is not write-protected.
bool languageWritesAllowed(const IniFile *ini);

/// Saves the file when something was added; a failure is ignored.
void saveLanguageFile(IniFile *ini);

/// What a new language file (null: the German defaults) brings besides the common
/// strings: dialog titles, Qt's translation, and a LanguageChange for every widget.
void applyLanguage(const IniFile *ini);

} // namespace detail
} // namespace drivewiz

#endif // DRIVEWIZ_LANG_WIZSPRACHE_P_H
