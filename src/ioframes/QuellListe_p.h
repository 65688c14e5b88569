#ifndef DRIVEWIZ_IOFRAMES_QUELLLISTE_P_H
#define DRIVEWIZ_IOFRAMES_QUELLLISTE_P_H

// What the output frames share: the source lists of their source controls, fresh values
// of the drive's hardware parameters, pictures, and hiding a wizard page.

#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>

class QLabel;
class QWidget;

namespace drivewiz {

class TParaClass;
class TParaTable;

namespace ioframes {

/// What a source list offers: parameters of these data types (column "Datentyp"), of
/// kind 0 (and 1 when `selections`), that the user's level may read. With `zeroOne`,
/// types other than "B" count only with a value range inside 0..1.
struct SourceFilter
{
    QStringList typeWords;
    bool selections = false;
    bool zeroOne = false;
};

/// The entry of a description row: "coordinate: name", with "axis." before it for a row
/// of another axis than the table's current one ("2.E17: Betriebsbereit").
QString SourceEntry(TParaTable *table, int p);

/// The entries for a list text: the rows each word names that pass the filter, word by
/// word in the list's order, then the rows of `always` that are not listed yet. An empty
/// list offers every row that passes.
QStringList SourceEntries(TParaTable *table, const QString &liste, const SourceFilter &filter,
                          const QStringList &always = {});

/// Puts the entries into the control's drop-down list, keeping its text: the entry whose
/// first word is the text's selects it, other texts stay as typed.
void FillSourceCombo(TParaClass *control, const QStringList &entries);

/// The description row a source text names by its first word ("2.E17: ..." gives E17 on
/// axis 2), or -1.
int SourceRecord(TParaTable *table, const QString &text);

/// The value (upper case, trimmed) of a drive parameter, fresh from the drive when the
/// table has a link to it; false when the table has no such parameter.
bool DriveValue(TParaTable *table, const QString &koordinate, QString &value);

/// Shows a picture of the library's resources in a label at its own size, rendered for
/// the screen's pixel ratio (works without a display).
void SetPicture(QLabel *label, const QString &resource);

/// A frame's link to its table (named in form files, resolved when the form has loaded).
class FrameTable
{
public:
    TParaTable *get() const { return m_table; }
    void set(TParaTable *table);
    QString name() const;
    /// Stores a name; false when nothing changes.
    bool rename(const QString &objectName);
    /// Looks the named table up on the frame's form unless one is linked.
    void resolve(QWidget *frame);

private:
    QPointer<TParaTable> m_table;
    QString m_name;
};

/// Hides the wizard page the widget lies on (Tag 1) and has its page control refresh the
/// tree. Nothing when the widget lies on no wizard page.
void HideWizardPage(QWidget *w);

/// Keeps a source control's list and its typed text: `refill` runs for the field the
/// control has now and for every field it builds later (the table rebuilds controls when
/// the online mode changes), once that field stands; leaving the field (not for its own
/// list) runs PrepareSourceText first thing (the control's BeforeExit), before the
/// control checks and writes the text.
void WatchSourceField(TParaClass *control, QObject *context, std::function<void()> refill);

/// Puts the text typed into a source control's drop-down field in the form of its entry,
/// without writing it: a typed parameter of the table becomes its entry (added to the
/// list when the list lacks it), so that the control finds it on leaving; a text naming
/// none is reported with s_ParamInvalid and `before` (the source when the user entered
/// the field; the control's previous value when empty) comes back, for an empty text
/// silently.
void PrepareSourceText(TParaClass *control, const QString &before);

/// Keeps the frame's fields in the order `order` gives them for Tab (the input fields of
/// parameter controls are made after the frame's own widgets, and made anew when the
/// table rebuilds a control); nulls in the list are passed over. The helper lives as long
/// as `context`.
void KeepTabOrder(QWidget *frame, QObject *context, std::function<QList<QWidget *>()> order);

/// The check behind CheckAchse: see there.
void CheckSource(TParaClass *control);

/// Entries computed once per list text, table, user level and axis.
class SourceListCache
{
public:
    QStringList entries(TParaTable *table, const QString &liste, const SourceFilter &filter,
                        const QStringList &always = {});

private:
    QString m_key;
    QStringList m_entries;
};

} // namespace ioframes
} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_QUELLLISTE_P_H
