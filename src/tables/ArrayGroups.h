#ifndef DRIVEWIZ_TABLES_ARRAYGROUPS_H
#define DRIVEWIZ_TABLES_ARRAYGROUPS_H

#include "drivewiz_global.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace drivewiz {

class TArrayPara;
namespace tables {
struct ElementValues;
}

/// Array parameters of equal length edited together, one element (a record) at a time.
///
/// The group names its arrays in ParamList ("J10,J11,J12"); every TArrayPara whose
/// wizArrayGroup is this group shows its array's element ArrayIndex. Element i of array
/// J10 is the parameter table's record "J10.i"; the record "J10.16382" holds the length,
/// and both 16382 and 16383 are never ordinary elements.
///
/// The group exports all elements of all its arrays as CSV (a title line "Index;J10;..."
/// and one line per element) and imports such files. An import is checked completely
/// before anything changes: a file that fails a check changes no element, and the
/// message names the line and column.
///
/// On a form it is a widget that is never shown at run time, like the parameter table.
class DRIVEWIZ_EXPORT TArrayGroup : public QWidget, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString ParamList READ ParamList WRITE SetParamList)
    Q_PROPERTY(int ArrayLen READ ArrayLen WRITE SetArrayLen NOTIFY arrayLengthChanged)
    Q_PROPERTY(int ArrayIndex READ ArrayIndex WRITE SetArrayIndex NOTIFY arrayIndexChanged)
    Q_PROPERTY(QString ParaSource READ ParaSourceName WRITE SetParaSourceName)

public:
    using NotifyEvent = std::function<void(QObject *sender)>;
    /// Asked before the length changes: sender, current length, new length, and whether
    /// the change may happen (true on entry; set it to false to refuse).
    using TBeforeChangeLenEvent =
        std::function<void(QObject *sender, int oldLen, int newLen, bool &allow)>;

    /// The element numbers that are no ordinary elements.
    static constexpr int LengthElement = 16382;
    static constexpr int StoreElement = 16383;
    /// The most elements an array can have.
    static constexpr int MaxArrayLen = LengthElement;
    /// The file filter of the export and import dialogs ("description|pattern|...").
    static const char *const CsvFilter;

    explicit TArrayGroup(QWidget *parent = nullptr);
    ~TArrayGroup() override;

    // --- properties -----------------------------------------------------------------
    QString ParamList() const { return m_paramList; }
    void SetParamList(const QString &list);
    /// The arrays of ParamList, trimmed, in order.
    const QStringList &Params() const { return m_params; }
    int ArrayLen() const { return m_arrayLen; }
    /// Changes the length of every array: below 2 is refused with a message, and
    /// BeforeLengthChange may refuse. Missing element records are made from element 0.
    void SetArrayLen(int length);
    int ArrayIndex() const { return m_arrayIndex; }
    /// Makes an element current (clamped to the length): what the controls show is
    /// stored first, then they show the new element.
    void SetArrayIndex(int index);
    /// Moves the current element by `delta`, within the array.
    void StepArrayIndex(int delta);
    TParaTable *ParaSource() const { return m_table; }
    void SetwizParaSource(TParaTable *table);
    QString ParaSourceName() const;
    void SetParaSourceName(const QString &objectName);

    TBeforeChangeLenEvent BeforeLengthChange;
    NotifyEvent OnChangeArrayLength;
    NotifyEvent OnChangeArrayIndex;

    // --- length -----------------------------------------------------------------------
    /// The length of one array in the table: its record ".16382" when that holds a
    /// positive number, else the number of element records from 0 on. 0 when unknown.
    int GetParaTableArrayLen(const QString &koordinate, const QString &axis);
    /// The length of the group's arrays in the table; when they differ it says so and
    /// gives the shortest.
    int GetInitialArrayLen();
    /// Takes the length from the table (nothing asked, no message for a short array).
    void InitArrayLength();

    // --- controls and the drive ---------------------------------------------------------
    /// The TArrayPara controls bound to this group, in the form's order.
    QList<TArrayPara *> Controls() const;
    /// Every control shows the current element's record.
    void LoadControlsFromParaTable();
    /// Every control's text goes into its element's record.
    void StoreControlsInParaTable();
    /// Writes every element of every array to the drive (a changed length first);
    /// false when something failed (it is reported).
    bool StoreArraysInTool();
    /// Reads every element from the drive into the table; false when something failed.
    bool UpdateArraysFromTool();
    /// Copies the values of element `index` into the current element of every array.
    /// Refused in read-back mode.
    bool CopyRecord(int index);
    /// The values of array `paramIndex` (0-based in ParamList) joined by the separator;
    /// returns the number of values, -1 for an unknown array.
    int GetAllValues(int paramIndex, QString &values, QChar separator);

    // --- files ------------------------------------------------------------------------------
    /// Asks for a file with an open (or save) dialog; the name given is the proposal and
    /// takes the choice. False when cancelled.
    bool CheckDatei(QString &fileName, const QString &title, bool save);
    /// Writes all elements as CSV. Without a name, or with `ask`, the user chooses the
    /// file (proposed: the last export). Separator NUL means ";".
    bool ExportCSV(QString fileName, QChar separator = QChar(), bool ask = false);
    /// Reads a file written by ExportCSV: columns are matched by their coordinates.
    /// Separator NUL: taken from the title line (";", tab, else ",").
    bool ImportCSV(QString fileName, QChar separator = QChar(), bool ask = false);
    /// Reads a file whose columns are the group's arrays in ParamList order, with or
    /// without an index column and a title line. `text` is the file dialog's title.
    bool ImportAnonymousCSV(QString fileName, QChar separator = QChar(),
                            const QString &text = QString(), bool ask = false);
    /// The file of the last export (kept in wiz.cfg under "LastExpFile_<group name>").
    QString LastExportFile() const;
    /// The standard CRC-32 of the first `count` elements (at most ArrayLen) of every
    /// array, each value as a 32-bit little-endian integer: equal values give equal
    /// checksums whatever their text looked like.
    quint32 CalcCRC32(quint32 count);

    void Loaded() override;

Q_SIGNALS:
    void arrayLengthChanged(int length);
    void arrayIndexChanged(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct ImportData;
    bool readImport(const QString &fileName, QChar separator, bool anonymous, ImportData &data);
    bool applyImport(const ImportData &data, const QString &fileName);
    bool changeLength(int length, bool ask);
    void ensureRecords(int length);
    bool chooseFile(QString &fileName, const QString &title, bool save, bool ask);
    const std::vector<int> &rows();
    const tables::ElementValues &elementValues();
    int row(int param, int element);
    QString axis() const;
    void leaveFocusedControl();
    bool transfer(bool store);
    void formAccepted();

    QString m_paramList;
    QStringList m_params;
    int m_arrayLen = 0;
    int m_arrayIndex = 0;
    QPointer<TParaTable> m_table;
    QString m_tableName;
    bool m_lengthChanged = false;
    // Rows of the element records (param * ArrayLen + element; -1 where missing), valid
    // while the table, its size, its axis and the group's arrays and length stay as they
    // were when they were looked up.
    std::vector<int> m_rows;
    std::vector<qint64> m_rowsKey;
    quint64 m_rowsGeneration = 0; // counts the look-ups of m_rows
    std::unique_ptr<tables::ElementValues> m_values;
};

} // namespace drivewiz

#endif // DRIVEWIZ_TABLES_ARRAYGROUPS_H
