#ifndef DRIVEWIZ_PARAMTABLE_PARAMWRITE_H
#define DRIVEWIZ_PARAMTABLE_PARAMWRITE_H

// The vocabulary of parameter sets, undo and the journal: which parameter (ParamKey), who
// wrote a value (WriteOrigin), one write as the table reports it (ParamWrite), and what
// a write of many values gives back (ApplyResult).

#include "drivewiz_enums.h"
#include "drivewiz_global.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMetaType>
#include <QString>

namespace drivewiz {

/// One parameter of a table: its coordinate ("B33", "A40.1", upper case, trimmed) and the
/// text of its axis as the description file gives it ("1", "2", "0" for the whole drive,
/// empty when the table has no axes).
struct DRIVEWIZ_EXPORT ParamKey
{
    QString koordinate;
    QString achse;

    ParamKey() = default;
    ParamKey(const QString &koordinate, const QString &achse);

    /// The coordinate as users write it: with the axis as prefix for axes 2 to 4
    /// ("2.B33.1"), without for axis 0 or 1.
    QString text() const;
    /// The reverse of text(): "2.B33" is B33 on axis 2; a text without prefix is on
    /// `defaultAxis`.
    static ParamKey fromText(const QString &text, const QString &defaultAxis = QString());
    /// Axes "0", "1" and "" all name the drive's first axis: they match each other.
    /// The text is text(); keys compare and hash without making it.
    QString hashText() const { return text(); }
    /// The axis as a number, 1 for "0", "1" and ""; -1 for a text that is none.
    int axisNumber() const;
    bool isValid() const { return !koordinate.isEmpty(); }
    bool operator==(const ParamKey &other) const
    {
        return koordinate == other.koordinate && axisNumber() == other.axisNumber();
    }
    bool operator!=(const ParamKey &other) const { return !(*this == other); }
};

inline size_t qHash(const ParamKey &key, size_t seed = 0)
{
    return qHash(key.koordinate, seed) ^ size_t(key.axisNumber() * 0x9E3779B1u);
}

/// Who made a write: typed in a control, reset to default, reverted to the value at
/// opening, an undo or redo step, an Apply of a compared set, or the host through the
/// library's C interface.
enum class WriteOrigin { Typed, Reset, Revert, Undo, Redo, Apply, Host };

/// The fixed keyword of an origin in journal files: "typed", "reset", ...
DRIVEWIZ_EXPORT QString writeOriginKeyword(WriteOrigin origin);
/// The origin of a keyword; false for a word that is none.
DRIVEWIZ_EXPORT bool writeOriginFromKeyword(const QString &keyword, WriteOrigin &origin);

/// One value the library wrote. Offline the value goes into the table (and to the host
/// when the wizard closes with OK); online it is posted to the host at once.
struct DRIVEWIZ_EXPORT ParamWrite
{
    /// `answer` of a write kept in the table without asking the host.
    static constexpr int kKeptInTable = -1;

    QDateTime time;
    ParamKey key;
    quint32 address = 0;
    QString oldValue;
    QString newValue;
    WriteOrigin origin = WriteOrigin::Typed;
    tOnlineModus mode = omOffline;
    /// The host's status character (0: written, 'V': the enable is on, other: an error
    /// code), or kKeptInTable.
    int answer = kKeptInTable;

    bool accepted() const { return answer == kKeptInTable || answer == 0; }
    /// The answer as the journal writes it: "" kept in the table, "0" written, "V", or
    /// the code in decimal.
    QString answerText() const;
};

/// A value of a set that was not written, and why (in the user's language).
struct DRIVEWIZ_EXPORT ApplyRefusal
{
    ParamKey key;
    QString value;
    QString reason;
};

/// What a write of several values did. Refused values are listed with their reason; a
/// value brought into its limits is written as limited and listed in `limited`.
struct DRIVEWIZ_EXPORT ApplyResult
{
    int written = 0;
    QList<ApplyRefusal> refused;
    QList<ApplyRefusal> limited; ///< reason holds the value that was written
    QList<ParamKey> unknown;     ///< coordinates the table does not know: not written
    bool complete() const { return refused.isEmpty() && unknown.isEmpty(); }
};

/// One value change of an undo step: the value before and after.
struct DRIVEWIZ_EXPORT ParamChange
{
    ParamKey key;
    QString oldValue;
    QString newValue;
};

} // namespace drivewiz

Q_DECLARE_METATYPE(drivewiz::ParamKey)
Q_DECLARE_METATYPE(drivewiz::ParamWrite)

#endif // DRIVEWIZ_PARAMTABLE_PARAMWRITE_H
