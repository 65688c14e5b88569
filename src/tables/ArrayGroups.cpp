// The array group: properties, length and current element, its controls, and the
// transfer of all elements to and from the drive.

#include "tables/ArrayGroups.h"

#include "lang/wizSprache.h"
#include "paramctrls/ArrayPara.h"
#include "paramtable/ParaTable.h"
#include "paramtable/coordinates.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "tables/ArrayGroups_p.h"
#include "util/Divers.h"

#include <QApplication>
#include <QDialog>
#include <QPainter>
#include <QtEndian>

#include <algorithm>

namespace drivewiz {

const char *const TArrayGroup::CsvFilter =
    "CSV-Dateien (*.csv)|*.CSV|Text-Dateien (*.txt)|*.TXT|Alle Dateien (*.*)|*.*";

namespace {

QString recordName(const QString &param, int element)
{
    return param + QLatin1Char('.') + QString::number(element);
}

// A CSV field of the table's own files: always quoted (no cell of a description file
// holds a double quote).
QString quoted(QString cell)
{
    cell.remove(QLatin1Char('"'));
    return QLatin1Char('"') + cell + QLatin1Char('"');
}

} // namespace

TArrayGroup::TArrayGroup(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("ArrayGroup"));
    setVisible(false); // a component, not something to look at
}

TArrayGroup::~TArrayGroup()
{
    addComponentState(csDestroying);
}

// --- properties ------------------------------------------------------------------------------

void TArrayGroup::SetParamList(const QString &list)
{
    if (m_paramList == list) return;
    m_paramList = list;
    m_params.clear();
    const TCharSet comma(QStringLiteral(","));
    const int words = LWordCount(list, comma, ewMultipleDelim);
    for (int i = 1; i <= words; ++i) {
        const QString param = LExtractWord(i, list, comma, ewMultipleDelim).trimmed();
        if (!param.isEmpty()) m_params << param;
    }
    m_rows.clear();
    if (!isLoading() && m_table) InitArrayLength();
}

void TArrayGroup::SetArrayLen(int length)
{
    if (isLoading() || isDesigning()) {
        m_arrayLen = length;
        return;
    }
    changeLength(length, true);
}

bool TArrayGroup::changeLength(int length, bool ask)
{
    if (length < 2) {
        ShowMessage(QStringLiteral("Array length must be at least 2 !!!"));
        return false;
    }
    if (length > MaxArrayLen) {
        ShowMessage(QStringLiteral("Array length must be at most %1 !!!").arg(MaxArrayLen));
        return false;
    }
    if (length == m_arrayLen) return true;
    if (ask && BeforeLengthChange) {
        bool allow = true;
        BeforeLengthChange(this, m_arrayLen, length, allow);
        if (!allow) return false;
    }
    StoreControlsInParaTable();
    ensureRecords(length);
    m_arrayLen = length;
    m_rows.clear();
    m_lengthChanged = true;
    if (OnChangeArrayLength) OnChangeArrayLength(this);
    Q_EMIT arrayLengthChanged(length);
    if (m_arrayIndex >= length) SetArrayIndex(length - 1);
    if (m_table && m_table->Online() == omOnline) StoreArraysInTool();
    return true;
}

void TArrayGroup::SetArrayIndex(int index)
{
    if (isLoading() || isDesigning()) {
        m_arrayIndex = std::max(index, 0);
        return;
    }
    index = std::clamp(index, 0, std::max(m_arrayLen - 1, 0));
    if (index == m_arrayIndex) return;
    QWidget *focus = QApplication::focusWidget();
    TArrayPara *focused = nullptr;
    for (TArrayPara *c : Controls()) {
        if (focus && c->isAncestorOf(focus)) focused = c;
    }
    // Leaving the field checks and (online) writes what was typed, before it moves on.
    if (focused) focus->clearFocus();
    StoreControlsInParaTable();
    m_arrayIndex = index;
    LoadControlsFromParaTable();
    if (focused && focused->GetEditControl()) focused->GetEditControl()->setFocus(Qt::OtherFocusReason);
    if (OnChangeArrayIndex) OnChangeArrayIndex(this);
    Q_EMIT arrayIndexChanged(index);
}

void TArrayGroup::StepArrayIndex(int delta)
{
    SetArrayIndex(m_arrayIndex + delta);
}

void TArrayGroup::SetwizParaSource(TParaTable *table)
{
    m_table = table;
    if (table) m_tableName = table->objectName();
    m_rows.clear();
}

QString TArrayGroup::ParaSourceName() const
{
    return m_table ? m_table->objectName() : m_tableName;
}

void TArrayGroup::SetParaSourceName(const QString &objectName)
{
    m_tableName = objectName;
    QWidget *form = window();
    if (form && !objectName.isEmpty()) m_table = form->findChild<TParaTable *>(objectName);
    m_rows.clear();
}

QString TArrayGroup::axis() const
{
    return m_table ? QString::number(m_table->CurrentAx()) : QStringLiteral("1");
}

void TArrayGroup::Loaded()
{
    Component::Loaded();
    if (!m_table) {
        QWidget *form = window();
        // Without a named table the form's table serves, as for parameter controls.
        if (form) m_table = m_tableName.isEmpty() ? form->findChild<TParaTable *>()
                                                  : form->findChild<TParaTable *>(m_tableName);
    }
    if (!m_table || isDesigning()) return;
    // An offline wizard writes its controls when it closes with OK; the elements that no
    // control shows at that moment go to the drive here.
    if (auto *dialog = qobject_cast<QDialog *>(window()))
        connect(dialog, &QDialog::accepted, this, &TArrayGroup::formAccepted, Qt::UniqueConnection);
    InitArrayLength();
    m_arrayIndex = std::clamp(m_arrayIndex, 0, std::max(m_arrayLen - 1, 0));
    if (m_table->Online() == omOnline) UpdateArraysFromTool();
    LoadControlsFromParaTable();
}

void TArrayGroup::formAccepted()
{
    if (m_table && m_table->Online() == omOffline) StoreArraysInTool();
}

void TArrayGroup::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    if (!isDesigning()) return;
    QPainter p(this);
    p.drawRect(rect().adjusted(0, 0, -1, -1));
    p.drawText(rect(), Qt::AlignCenter, objectName());
}

// --- length -----------------------------------------------------------------------------------

int TArrayGroup::GetParaTableArrayLen(const QString &koordinate, const QString &axis)
{
    if (!m_table) return 0;
    quint32 address = 0;
    // The length record is looked up in the table only: a drive that describes its
    // parameters one by one need not know it.
    const int lengthRow = m_table->FindParAxUnknown(recordName(koordinate, LengthElement), axis);
    int length = 0;
    if (lengthRow >= 0 && TryStrToInt(m_table->Cell(lengthRow, QStringLiteral("Wert")).trimmed(), length) &&
        length > 0)
        return std::min(length, MaxArrayLen);
    length = 0;
    while (length < MaxArrayLen &&
           m_table->FindRecord(recordName(koordinate, length), axis, address) >= 0)
        ++length;
    return length;
}

int TArrayGroup::GetInitialArrayLen()
{
    if (m_params.isEmpty()) return 0;
    QList<int> lengths;
    for (const QString &param : std::as_const(m_params))
        lengths << GetParaTableArrayLen(param, axis());
    const int shortest = *std::min_element(lengths.begin(), lengths.end());
    if (std::any_of(lengths.begin(), lengths.end(), [&](int n) { return n != lengths.first(); })) {
        QString text = QStringLiteral("Error in TArrayGroup.InitArrayLength: Different arrays "
                                      "lengths occured:\r");
        for (int i = 0; i < m_params.size(); ++i)
            text += QLatin1Char('\r') + m_params.at(i) + QStringLiteral(": Len=") +
                    QString::number(lengths.at(i));
        ShowMessage(text);
    }
    return shortest;
}

void TArrayGroup::InitArrayLength()
{
    const int length = GetInitialArrayLen();
    m_rows.clear();
    if (length == m_arrayLen) return;
    m_arrayLen = length;
    if (OnChangeArrayLength) OnChangeArrayLength(this);
    Q_EMIT arrayLengthChanged(length);
}

// Element records the table lacks are made from element 0: same description, the
// element's own coordinate and address, the default value. The length record follows
// the new length.
void TArrayGroup::ensureRecords(int length)
{
    if (!m_table) return;
    const int columns = m_table->ColCount() - 1; // without the sort-string column
    const int colKoord = m_table->FindColumn(QStringLiteral("Koordinate"));
    const int colAdr = m_table->FindColumn(QStringLiteral("USS-Adresse /hex"));
    const int colWert = m_table->FindColumn(QStringLiteral("Wert"));
    const int colDefault = m_table->FindColumn(QStringLiteral("Defaultwert"));
    const QChar delimiter = m_table->Delimiter() == ',' ? QLatin1Char(',') : QLatin1Char(';');
    const QString ax = axis();
    // The records of the present length are known already; only those beyond it, or
    // missing within it, are looked for.
    const int known = std::min(length, m_arrayLen);
    const std::vector<int> present = rows();
    bool added = false;
    for (int p = 0; p < m_params.size(); ++p) {
        const QString &param = m_params.at(p);
        const int first = m_table->GetRecNo(recordName(param, 0), false);
        if (first < 0 || colKoord < 0) continue;
        const auto make = [&](int element, const QString &value) {
            QStringList cells;
            for (int c = 0; c < columns; ++c) {
                QString cell = m_table->CellAt(first, c);
                if (c == colKoord) cell = recordName(param, element);
                if (c == colAdr)
                    cell = IntToHex(GetQ7Addresse(recordName(param, element), m_table->CurrentAx()), 8) +
                           QLatin1Char('h');
                if (c == colWert) cell = value;
                cells << quoted(cell);
            }
            m_table->AppendRowIndexed(cells.join(delimiter));
            added = true;
        };
        const QString fresh = colDefault >= 0 ? m_table->CellAt(first, colDefault) : QString();
        for (int i = 1; i < length; ++i) {
            if (i < known && present[size_t(p) * size_t(m_arrayLen) + size_t(i)] >= 0) continue;
            if (m_table->FindParAxUnknown(recordName(param, i), ax) < 0) make(i, fresh);
        }
        const int lengthRow = m_table->FindParAxUnknown(recordName(param, LengthElement), ax);
        if (lengthRow < 0)
            make(LengthElement, QString::number(length));
        else if (m_table->Cell(lengthRow, QStringLiteral("Wert")) != QString::number(length))
            m_table->SetCell(lengthRow, QStringLiteral("Wert"), QString::number(length));
    }
    if (added) m_rows.clear();
}

// --- element records ---------------------------------------------------------------------------

const std::vector<int> &TArrayGroup::rows()
{
    const std::vector<qint64> key = {qint64(quintptr(m_table.data())),
                                     m_table ? m_table->RowCount() : 0,
                                     m_table ? m_table->CurrentAx() : 0, m_arrayLen,
                                     qint64(qHash(m_params.join(QLatin1Char(','))))};
    if (key == m_rowsKey && m_rows.size() == size_t(m_params.size()) * size_t(m_arrayLen))
        return m_rows;
    m_rows.assign(size_t(m_params.size()) * size_t(std::max(m_arrayLen, 0)), -1);
    if (!m_table) return m_rows;
    // Descriptions fetched from the host while looking up add rows and move positions:
    // look up again until the table stays as it is.
    for (int attempt = 0; attempt < 3; ++attempt) {
        const int before = m_table->RowCount();
        const QString ax = axis();
        quint32 address = 0;
        for (int p = 0; p < m_params.size(); ++p) {
            for (int i = 0; i < m_arrayLen; ++i)
                m_rows[size_t(p) * size_t(m_arrayLen) + size_t(i)] =
                    m_table->FindRecord(recordName(m_params.at(p), i), ax, address);
        }
        if (m_table->RowCount() == before) break;
    }
    m_rowsKey = {qint64(quintptr(m_table.data())), m_table->RowCount(), m_table->CurrentAx(),
                 m_arrayLen, qint64(qHash(m_params.join(QLatin1Char(','))))};
    ++m_rowsGeneration;
    return m_rows;
}

const tables::ElementValues &TArrayGroup::elementValues()
{
    using tables::ElementValues;
    if (!m_values) m_values = std::make_unique<ElementValues>();
    ElementValues &v = *m_values;
    const std::vector<int> &r = rows(); // first: looking up may add rows
    const int col = m_table ? m_table->FindColumn(QStringLiteral("Wert")) : -1;
    const quint64 revision = m_table ? m_table->CellRevision() : 0;
    if (v.rowsGeneration == m_rowsGeneration && v.cellRevision == revision && v.column == col &&
        v.length == m_arrayLen && v.kind.size() == r.size())
        return v;
    v.littleEndian.resize(r.size());
    v.kind.resize(r.size());
    for (size_t k = 0; k < r.size(); ++k) {
        quint32 value = 0;
        v.kind[k] = r[k] >= 0 && col >= 0
                        ? tables::classifyValue(m_table->CellAt(r[k], col), value)
                        : ElementValues::Empty;
        v.littleEndian[k] = qToLittleEndian(value);
    }
    v.rowsGeneration = m_rowsGeneration;
    v.cellRevision = revision;
    v.column = col;
    v.length = m_arrayLen;
    return v;
}

int TArrayGroup::row(int param, int element)
{
    if (param < 0 || param >= m_params.size() || element < 0 || element >= m_arrayLen) return -1;
    return rows()[size_t(param) * size_t(m_arrayLen) + size_t(element)];
}

// --- controls ----------------------------------------------------------------------------------

QList<TArrayPara *> TArrayGroup::Controls() const
{
    QList<TArrayPara *> out;
    QWidget *form = window();
    if (!form || form == this) return out;
    for (TArrayPara *c : form->findChildren<TArrayPara *>()) {
        if (c->wizArrayGroup() == this ||
            (!c->wizArrayGroup() && !objectName().isEmpty() && c->wizArrayGroupName() == objectName()))
            out << c;
    }
    return out;
}

void TArrayGroup::LoadControlsFromParaTable()
{
    for (TArrayPara *c : Controls()) {
        if (!c->wizParaSource() && m_table) c->SetwizParaSource(m_table);
        c->GetArrayElement(m_arrayIndex);
    }
}

void TArrayGroup::StoreControlsInParaTable()
{
    for (TArrayPara *c : Controls()) {
        if (c->GetEditControl()) c->SetArrayElement(c->Element());
    }
}

// --- the drive ----------------------------------------------------------------------------------

bool TArrayGroup::StoreArraysInTool()
{
    StoreControlsInParaTable();
    return transfer(true);
}

bool TArrayGroup::UpdateArraysFromTool()
{
    const bool ok = transfer(false);
    LoadControlsFromParaTable();
    return ok;
}

bool TArrayGroup::transfer(bool store)
{
    if (!m_table || (store && m_table->Online() == omRueckdoku)) return false;
    const QString context = store ? QStringLiteral("StoreArraysInTool")
                                  : QStringLiteral("UpdateArraysFromTool");
    const int ax = m_table->CurrentAx();
    const auto addressOf = [&](int r, const QString &record) {
        const QString hex = r >= 0 ? m_table->Cell(r, QStringLiteral("USS-Adresse /hex")) : QString();
        return hex.trimmed().isEmpty() ? GetQ7Addresse(record, ax) : quint32(HexToInt(hex));
    };
    const auto write = [&](quint32 address, const QString &record, const QString &value) {
        const char status = m_table->SetParaValue(address, record, value);
        if (status == 'V') ShowMessage(s_FreigabeAus + QStringLiteral(": ") + record);
        return status == 0;
    };
    for (int p = 0; p < m_params.size(); ++p) {
        const QString &param = m_params.at(p);
        const int first = row(p, 0);
        if (store && first >= 0 &&
            StrToIntDef(m_table->Cell(first, QStringLiteral("Write-Level")).trimmed(), 0) >= 6)
            continue; // a read-only array is never written
        const QString lengthRecord = recordName(param, LengthElement);
        if (store && m_lengthChanged &&
            !write(addressOf(-1, lengthRecord), lengthRecord, QString::number(m_arrayLen))) {
            ShowMessage(QStringLiteral("Array size update not possible!"));
            return false;
        }
        for (int i = 0; i < m_arrayLen; ++i) {
            const QString record = recordName(param, i);
            const int r = row(p, i);
            if (r < 0) {
                ShowMessage(QStringLiteral("Error in TArrayGroup.") + context + QStringLiteral(": \"") +
                            record + QStringLiteral("\" not found!\r") +
                            QStringLiteral("Parameter transfer for the rest of this array group aborted!"));
                return false;
            }
            if (store) {
                if (!write(addressOf(r, record), record, m_table->Cell(r, QStringLiteral("Wert"))))
                    return false;
            } else {
                QString value;
                quint8 status = 0;
                if (!m_table->GetFreshParaValue(addressOf(r, record), record, value, status))
                    return false;
            }
        }
        const QString storeRecord = recordName(param, StoreElement);
        if (store && m_lengthChanged) write(addressOf(-1, storeRecord), storeRecord, QStringLiteral("1"));
    }
    if (store) m_lengthChanged = false;
    return true;
}

bool TArrayGroup::CopyRecord(int index)
{
    if (!m_table) return false;
    if (m_table->Online() == omRueckdoku) {
        ShowMessage(QStringLiteral("\"CopyRecord\" not available with reverse documentation!"));
        return false;
    }
    if (index < 0 || index >= m_arrayLen || index == m_arrayIndex) return false;
    StoreControlsInParaTable();
    const int col = m_table->FindColumn(QStringLiteral("Wert"));
    for (int p = 0; p < m_params.size(); ++p) {
        const int from = row(p, index);
        const int to = row(p, m_arrayIndex);
        if (from < 0 || to < 0) continue;
        m_table->SetCellAt(to, col, m_table->CellAt(from, col));
        if (m_table->Online() == omOnline) {
            const QString record = recordName(m_params.at(p), m_arrayIndex);
            m_table->SetParaValue(GetQ7Addresse(record, m_table->CurrentAx()), record,
                                  m_table->CellAt(to, col));
        }
    }
    LoadControlsFromParaTable();
    return true;
}

int TArrayGroup::GetAllValues(int paramIndex, QString &values, QChar separator)
{
    values.clear();
    if (!m_table || paramIndex < 0 || paramIndex >= m_params.size()) return -1;
    StoreControlsInParaTable();
    const int col = m_table->FindColumn(QStringLiteral("Wert"));
    QStringList parts;
    for (int i = 0; i < m_arrayLen; ++i) {
        const int r = row(paramIndex, i);
        parts << (r >= 0 ? m_table->CellAt(r, col) : QString());
    }
    values = parts.join(separator);
    return int(parts.size());
}

} // namespace drivewiz
