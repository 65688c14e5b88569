// The language beyond the common strings: Qt's own texts (dialog buttons, file dialogs)
// from Qt's translations, the titles of message dialogs from the language file, and the
// LanguageChange that tells every widget to translate itself again.

#include "lang/wizSprache.h"

#include "lang/wizSprache_p.h"
#include "platform/dialogs.h"
#include "platform/inifile.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

namespace drivewiz {

namespace {

const QString kDialogSection = QStringLiteral("Dialog");

struct DialogTitle
{
    MsgDlgType type;
    const char *key;
};

const DialogTitle kTitles[] = {{MsgDlgType::Warning, "Warning"},
                               {MsgDlgType::Error, "Error"},
                               {MsgDlgType::Information, "Information"},
                               {MsgDlgType::Confirmation, "Confirmation"}};

QString g_locale = QStringLiteral("?"); // nothing chosen yet
QPointer<QTranslator> g_translator;
QString g_folder;

// One translator stays installed and is reloaded in place, so that a switch sends one
// LanguageChange, ours, not one for removing and one for installing.
QTranslator *translator()
{
    if (!g_translator && QCoreApplication::instance()) {
        g_translator = new QTranslator(QCoreApplication::instance());
        QCoreApplication::installTranslator(g_translator); // empty: no LanguageChange
    }
    return g_translator;
}

} // namespace

QString LanguageLocale(int language, const IniFile *ini)
{
    const QString named =
        ini ? ini->readString(kDialogSection, QStringLiteral("Locale"), QString()).trimmed()
            : QString();
    if (!named.isEmpty()) return named;
    return language == 1 ? QStringLiteral("de") : language == 2 ? QStringLiteral("en") : QString();
}

void SetQtTranslationsFolder(const QString &folder)
{
    g_folder = folder;
    g_locale = QStringLiteral("?"); // load again from there
}

bool SelectQtTranslation(const QString &locale)
{
    if (locale == g_locale || !QCoreApplication::instance()) return false;
    g_locale = locale;
    QTranslator *t = translator();
    const QString folder =
        g_folder.isEmpty() ? QLibraryInfo::path(QLibraryInfo::TranslationsPath) : g_folder;
    // Without a file for the locale (or without a locale) Qt speaks English, its own:
    // a failed load leaves the translator empty.
    const bool found = !locale.isEmpty() && t->load(QLocale(locale), QStringLiteral("qtbase"),
                                                     QStringLiteral("_"), folder);
    if (!found) (void)t->load(QString());
    return true;
}

QString QtTranslationLocale()
{
    return g_locale == QLatin1String("?") ? QString() : g_locale;
}

bool QtTranslationLoaded()
{
    return g_translator && !g_translator->isEmpty();
}

void NotifyLanguageChange()
{
    if (!QCoreApplication::instance()) return;
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &change);
}

namespace {

bool g_changePending = false;

// A table that switches its language resets the strings to German and then reads the
// new file: the widgets hear of it once, from the event loop, when both are done.
void notifyOnce()
{
    if (g_changePending || !QCoreApplication::instance()) return;
    g_changePending = true;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [] {
            g_changePending = false;
            NotifyLanguageChange();
        },
        Qt::QueuedConnection);
}

} // namespace

namespace detail {

// Everything a widget shows of the language; the widgets are told only when it changed.
QString fingerprint()
{
    QString all = QtTranslationLocale();
    int count = 0;
    const CommonString *strings = commonStrings(&count);
    for (int i = 0; i < count; ++i)
        all += QLatin1Char('\n') + *strings[i].variable;
    for (const auto &t : kTitles)
        all += QLatin1Char('\n') + DialogCaption(t.type);
    return all;
}

void applyLanguage(const IniFile *ini)
{
    static QString shown;
    for (const auto &t : kTitles) {
        SetDialogCaption(t.type, ini ? ini->readString(kDialogSection, QLatin1String(t.key),
                                                       QString())
                                     : QString());
    }
    const int language = ini ? QFileInfo(ini->path()).suffix().toInt() : 1;
    SelectQtTranslation(LanguageLocale(language, ini));
    const QString now = fingerprint();
    if (now == shown) return;
    shown = now;
    notifyOnce();
}

} // namespace detail
} // namespace drivewiz
