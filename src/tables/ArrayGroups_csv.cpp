// The array group's files: export, import (checked completely before anything changes),
// the file dialog and the checksum.

#include "tables/ArrayGroups.h"

#include "paramctrls/ArrayPara.h"
#include "paramtable/ParaTable.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "platform/textcodec.h"
#include "tables/ArrayGroups_p.h"
#include "util/Divers.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace drivewiz {

using tables::splitCsvLine;

namespace {

constexpr qint64 kMaxFileBytes = 64 * 1024 * 1024;
constexpr qsizetype kMaxLineChars = 1000000;

QString cfgKey(const QString &groupName)
{
    return QStringLiteral("LastExpFile_") + groupName;
}

// What a column's values must be, from the array's description (element 0).
struct ColumnRule
{
    bool number = false;
    bool integer = false;
    bool limits = false;
    double low = 0;
    double high = 0;
    int maxText = 0;
};

// A failed check: where and why. Line and column are 1-based; 0 means "the file".
struct ImportError
{
    int line = 0;
    int column = 0;
    QString text;
};

} // namespace

struct TArrayGroup::ImportData
{
    int elements = 0;
    std::vector<std::vector<QString>> values; // [param][element]; null: not in the file
};

QString TArrayGroup::LastExportFile() const
{
    return m_table ? m_table->ReadCFGString(cfgKey(objectName()), QString()) : QString();
}

bool TArrayGroup::CheckDatei(QString &fileName, const QString &title, bool save)
{
    const QString filter = tables::qtFileFilter(QString::fromLatin1(CsvFilter));
    QString chosen = save ? dialogService()->getSaveFileName(title, fileName, filter)
                          : dialogService()->getOpenFileName(title, fileName, filter);
    if (chosen.isEmpty()) return false;
    if (save && QFileInfo(chosen).suffix().isEmpty()) chosen += QStringLiteral(".csv");
    fileName = chosen;
    return true;
}

bool TArrayGroup::chooseFile(QString &fileName, const QString &title, bool save, bool ask)
{
    if (!fileName.isEmpty() && !ask) return true;
    QString proposal = fileName.isEmpty() ? LastExportFile() : fileName;
    if (!CheckDatei(proposal, title, save)) return false;
    fileName = proposal;
    return true;
}

// --- export -----------------------------------------------------------------------------------

namespace {

// A value is quoted only when it would otherwise split or lose its quotes.
void appendField(QString &out, const QString &value, QChar separator)
{
    if (!value.contains(separator) && !value.contains(QLatin1Char('"'))) {
        out += value;
        return;
    }
    QString escaped = value;
    escaped.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    out += QLatin1Char('"') + escaped + QLatin1Char('"');
}

QByteArray encodeFile(const QString &text)
{
    bool ascii = true;
    for (const QChar c : text) {
        if (c.unicode() >= 0x80) {
            ascii = false;
            break;
        }
    }
    if (ascii) return text.toLatin1();
    const QByteArray cp1252 = encodeWindows1252(text);
    return decodeWindows1252(cp1252) == text ? cp1252 : encodeUtf8(text);
}

} // namespace

namespace {

// The file as ASCII bytes, built from the elements' values where a cell is exactly its
// number and from the cell otherwise; false at the first cell that is not plain ASCII
// (or needs quotes), for the general path to take over.
bool asciiExport(TParaTable *table, const QStringList &params, const std::vector<int> &rows,
                 const tables::ElementValues &values, int length, QChar separator,
                 QByteArray &out)
{
    using tables::ElementValues;
    const char sep = char(separator.unicode());
    if (separator.unicode() >= 0x80 || sep == '"') return false;
    // With a digit or "-" as separator every number needs a look at its text.
    const bool numbers = !(sep == '-' || (sep >= '0' && sep <= '9'));
    const int col = table->FindColumn(QStringLiteral("Wert"));
    out.clear();
    out.reserve(qsizetype(length + 1) * (8 + 8 * params.size()));
    out += "Index";
    for (const QString &param : params) {
        out += sep;
        for (const QChar c : param) {
            if (c.unicode() >= 0x80) return false;
            out += char(c.unicode());
        }
    }
    out += "\r\n";
    // Written through a pointer into room made ahead: a number takes at most 11 characters,
    // a cell read as text makes its own room.
    constexpr qsizetype kNumber = 12;
    qsizetype used = out.size();
    const auto room = [&](qsizetype bytes) -> char * {
        if (used + bytes > out.size())
            out.resize(std::max(used + bytes, out.size() + out.size() / 2 + 1024));
        return out.data() + used;
    };
    for (int i = 0; i < length; ++i) {
        char *dst = room(kNumber + qsizetype(params.size()) * (kNumber + 1) + 2);
        dst = std::to_chars(dst, dst + kNumber, i).ptr;
        for (int p = 0; p < params.size(); ++p) {
            *dst++ = sep;
            const size_t k = size_t(p) * size_t(length) + size_t(i);
            const quint8 kind = values.kind[k];
            if (kind == ElementValues::Empty) continue;
            if (numbers && kind != ElementValues::Other) {
                const quint32 v = qFromLittleEndian(values.littleEndian[k]);
                dst = kind == ElementValues::Signed ? std::to_chars(dst, dst + kNumber, qint32(v)).ptr
                                                    : std::to_chars(dst, dst + kNumber, v).ptr;
                continue;
            }
            const QString value = table->CellAt(rows[k], col);
            used = dst - out.constData();
            dst = room(value.size() + qsizetype(params.size() - p) * (kNumber + 1) + 2);
            for (const QChar c : value) {
                const char16_t u = c.unicode();
                if (u >= 0x80 || u == sep || u == '"') return false;
                *dst++ = char(u);
            }
        }
        *dst++ = '\r';
        *dst++ = '\n';
        used = dst - out.constData();
    }
    out.truncate(used);
    return true;
}

} // namespace

bool TArrayGroup::ExportCSV(QString fileName, QChar separator, bool ask)
{
    if (!m_table) return false;
    if (!chooseFile(fileName, QStringLiteral("Export..."), true, ask)) return false;
    if (separator.isNull()) separator = QLatin1Char(';');
    StoreControlsInParaTable();
    const tables::ElementValues &values = elementValues();
    const std::vector<int> &r = rows();
    QByteArray bytes;
    if (!asciiExport(m_table, m_params, r, values, m_arrayLen, separator, bytes)) {
        const int col = m_table->FindColumn(QStringLiteral("Wert"));
        QString out;
        out += QStringLiteral("Index");
        for (const QString &param : std::as_const(m_params))
            out += separator + param;
        out += QStringLiteral("\r\n");
        for (int i = 0; i < m_arrayLen; ++i) {
            out += QString::number(i);
            for (int p = 0; p < m_params.size(); ++p) {
                out += separator;
                const int at = r[size_t(p) * size_t(m_arrayLen) + size_t(i)];
                if (at >= 0) appendField(out, m_table->CellAt(at, col), separator);
            }
            out += QStringLiteral("\r\n");
        }
        bytes = encodeFile(out);
    }
    // Written in place: a copy on the side (QSaveFile) would sync it to the disk, which
    // costs more than writing it; a failed write is reported all the same.
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size() ||
        !file.flush()) {
        ShowMessage(QStringLiteral("Export nicht möglich: ") + fileName + QLatin1Char('\r') +
                    file.errorString());
        return false;
    }
    m_table->WriteCFGString(cfgKey(objectName()), fileName);
    return true;
}

// --- import -----------------------------------------------------------------------------------

bool TArrayGroup::ImportCSV(QString fileName, QChar separator, bool ask)
{
    if (!m_table) return false;
    if (!chooseFile(fileName, QStringLiteral("Import..."), false, ask)) return false;
    ImportData data;
    return readImport(fileName, separator, false, data) && applyImport(data, fileName);
}

bool TArrayGroup::ImportAnonymousCSV(QString fileName, QChar separator, const QString &text,
                                     bool ask)
{
    if (!m_table) return false;
    const QString title = text.isEmpty() ? QStringLiteral("Import...") : text;
    if (!chooseFile(fileName, title, false, ask)) return false;
    ImportData data;
    return readImport(fileName, separator, true, data) && applyImport(data, fileName);
}

namespace {

class ImportReader
{
public:
    ImportReader(TParaTable *table, const QStringList &params, bool anonymous)
        : m_table(table), m_params(params), m_anonymous(anonymous)
    {}

    bool read(const QString &text, QChar separator, std::vector<std::vector<QString>> &values,
              int &elements, ImportError &error);

private:
    bool fail(int line, int column, const QString &text)
    {
        m_error->line = line;
        m_error->column = column;
        m_error->text = text;
        return false;
    }
    bool header(int line, bool named);
    bool dataLine(int line);
    bool checkValue(int line, int column, int param, QStringView value);
    ColumnRule ruleOf(int param);

    TParaTable *m_table;
    const QStringList &m_params;
    bool m_anonymous;
    ImportError *m_error = nullptr;
    std::vector<QStringView> m_fields;
    std::vector<QString> m_unquoted;
    std::vector<int> m_columnParam; // per file column: array, -1 the index column
    int m_columns = 0;              // columns that hold something
    bool m_hasIndex = true;
    std::vector<ColumnRule> m_rules;
    std::vector<std::pair<int, int>> m_indexLine; // element -> line, in file order
    std::vector<std::vector<QString>> *m_values = nullptr;
};

// Trailing empty fields (a line ending in separators) hold nothing.
int usedFields(const std::vector<QStringView> &fields)
{
    int n = int(fields.size());
    while (n > 0 && fields[size_t(n - 1)].isEmpty())
        --n;
    return n;
}

ColumnRule ImportReader::ruleOf(int param)
{
    ColumnRule rule;
    const int r = m_table->GetRecNo(m_params.at(param) + QStringLiteral(".0"), false);
    if (r < 0) return rule;
    const QStringList c = m_table->Cells(r, {"Art", "Datentyp", "UGW", "OGW", "Nachkommastellen"});
    const int kind = StrToIntDef(c[0].trimmed(), 0);
    const QString type = c[1].trimmed().toUpper();
    rule.number = (kind == 0 || kind == 1 || kind == 4) && !type.contains(QLatin1String("STR"));
    rule.integer = rule.number && StrToIntDef(c[4].trimmed(), 0) == 0 && type != QLatin1String("R64");
    rule.limits = rule.number && kind != 4 && tables::parseNumber(QStringView(c[2]), rule.low) &&
                  tables::parseNumber(QStringView(c[3]), rule.high);
    if (type.startsWith(QLatin1String("STR"))) rule.maxText = type.mid(3).toInt();
    return rule;
}

bool ImportReader::header(int line, bool named)
{
    const int used = usedFields(m_fields);
    m_columnParam.assign(size_t(used), -2);
    m_columns = used;
    if (!named) { // columns by position, with or without an index column
        m_hasIndex = used == m_params.size() + 1;
        if (!m_hasIndex && used != m_params.size())
            return fail(line, 1, QStringLiteral("%1 Spalten erwartet (mit Index %2), gefunden: %3")
                                     .arg(m_params.size())
                                     .arg(m_params.size() + 1)
                                     .arg(used));
        for (int c = 0; c < used; ++c)
            m_columnParam[size_t(c)] = m_hasIndex ? c - 1 : c;
        return true;
    }
    if (used == 0 || m_fields[0].compare(QLatin1String("Index"), Qt::CaseInsensitive) != 0)
        return fail(line, 1, QStringLiteral("\"Index\" erwartet"));
    m_columnParam[0] = -1;
    for (int c = 1; c < used; ++c) {
        const QStringView name = m_fields[size_t(c)];
        int param = -1;
        for (int p = 0; p < m_params.size() && param < 0; ++p) {
            if (name.compare(m_params.at(p), Qt::CaseInsensitive) == 0) param = p;
        }
        if (param < 0)
            return fail(line, c + 1, QStringLiteral("Koordinate \"%1\" gehört nicht zu dieser "
                                                    "Gruppe (%2)")
                                         .arg(name.toString(), m_params.join(QLatin1Char(','))));
        if (std::find(m_columnParam.begin(), m_columnParam.end(), param) != m_columnParam.end())
            return fail(line, c + 1, QStringLiteral("Koordinate \"%1\" kommt doppelt vor").arg(name.toString()));
        m_columnParam[size_t(c)] = param;
    }
    return true;
}

bool ImportReader::checkValue(int line, int column, int param, QStringView value)
{
    const ColumnRule &rule = m_rules[size_t(param)];
    const QString &name = m_params.at(param);
    if (rule.maxText > 0 && value.size() > rule.maxText)
        return fail(line, column, QStringLiteral("Text länger als %1 Zeichen (%2)").arg(rule.maxText).arg(name));
    if (!rule.number) return true;
    double number = 0;
    qint64 integer = 0;
    bool ok = false;
    if (rule.integer) {
        ok = tables::parseIntegerValue(value, integer);
        number = double(integer);
    } else {
        ok = tables::parseNumber(value, number);
    }
    if (!ok)
        return fail(line, column, QStringLiteral("\"%1\" ist keine Zahl (%2)").arg(value.toString(), name));
    if (rule.limits && (number < rule.low || number > rule.high))
        return fail(line, column, QStringLiteral("%1 liegt ausserhalb der Grenzen von %2 (%3 .. %4)")
                                      .arg(value.toString(), name, FloatToStr(rule.low),
                                           FloatToStr(rule.high)));
    return true;
}

bool ImportReader::dataLine(int line)
{
    const int used = usedFields(m_fields);
    if (used == 0) return true; // an empty line (or only separators) holds no element
    if (used > m_columns)
        return fail(line, m_columns + 1, QStringLiteral("zu viele Werte (%1 Spalten erwartet)").arg(m_columns));
    if (int(m_fields.size()) < m_columns)
        return fail(line, int(m_fields.size()) + 1,
                    QStringLiteral("zu wenige Werte (%1 Spalten erwartet)").arg(m_columns));
    int element = int(m_indexLine.size());
    if (m_hasIndex) {
        const QStringView index = m_fields[0];
        bool ok = false;
        element = index.toInt(&ok);
        if (!ok || element < 0 || element >= TArrayGroup::MaxArrayLen)
            return fail(line, 1, QStringLiteral("Index \"%1\" ist keine ganze Zahl von 0 bis %2")
                                     .arg(index.toString())
                                     .arg(TArrayGroup::MaxArrayLen - 1));
    } else if (element >= TArrayGroup::MaxArrayLen) {
        return fail(line, 1, QStringLiteral("mehr als %1 Elemente").arg(TArrayGroup::MaxArrayLen));
    }
    m_indexLine.emplace_back(element, line);
    for (int c = m_hasIndex ? 1 : 0; c < m_columns; ++c) {
        const int param = m_columnParam[size_t(c)];
        const QStringView value = m_fields[size_t(c)];
        if (param < 0 || value.isEmpty()) continue;
        if (!checkValue(line, c + 1, param, value)) return false;
        auto &column = (*m_values)[size_t(param)];
        if (size_t(element) >= column.size()) column.resize(size_t(element) + 1);
        column[size_t(element)] = value.toString();
    }
    return true;
}

bool ImportReader::read(const QString &text, QChar separator,
                        std::vector<std::vector<QString>> &values, int &elements,
                        ImportError &error)
{
    m_error = &error;
    m_values = &values;
    values.assign(size_t(m_params.size()), {});
    for (int p = 0; p < m_params.size(); ++p)
        m_rules.push_back(ruleOf(p));
    bool headerDone = false;
    int lineNo = 0;
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = text.indexOf(QLatin1Char('\n'), start);
        if (end < 0) end = text.size();
        QStringView line = QStringView(text).mid(start, end - start);
        start = end + 1;
        ++lineNo;
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
        if (line.size() > kMaxLineChars)
            return fail(lineNo, 0, QStringLiteral("die Zeile ist länger als %1 Zeichen").arg(kMaxLineChars));
        if (!headerDone && line.trimmed().isEmpty()) continue;
        if (separator.isNull()) separator = tables::detectDelimiter(line);
        splitCsvLine(line, separator, m_fields, m_unquoted);
        if (!headerDone) {
            headerDone = true;
            double number = 0;
            // Anonymous files may start with a title line or right away with values.
            const bool named = !m_anonymous || (!m_fields.empty() && !m_fields[0].isEmpty() &&
                                                !tables::parseNumber(m_fields[0], number));
            if (!header(lineNo, named && !m_anonymous)) return false;
            if (m_anonymous) {
                if (named && m_fields[0].compare(QLatin1String("Index"), Qt::CaseInsensitive) == 0 &&
                    !m_hasIndex)
                    return fail(lineNo, 1, QStringLiteral("%1 Spalten erwartet").arg(m_params.size() + 1));
                if (named) continue;
            } else {
                continue;
            }
        }
        if (!dataLine(lineNo)) return false;
    }
    elements = int(m_indexLine.size());
    if (elements == 0) return fail(0, 0, QStringLiteral("die Datei enthält keine Elemente"));
    std::vector<int> seen(size_t(elements), 0);
    for (const auto &[element, line] : m_indexLine) {
        if (element >= elements)
            return fail(line, 1, QStringLiteral("Index %1 ausserhalb von 0 bis %2 (die Datei hat %3 Elemente)")
                                     .arg(element)
                                     .arg(elements - 1)
                                     .arg(elements));
        if (seen[size_t(element)]) return fail(line, 1, QStringLiteral("Index %1 kommt doppelt vor").arg(element));
        seen[size_t(element)] = line;
    }
    for (auto &column : values) {
        if (!column.empty()) column.resize(size_t(elements));
    }
    return true;
}

} // namespace

bool TArrayGroup::readImport(const QString &fileName, QChar separator, bool anonymous,
                             ImportData &data)
{
    const auto report = [&fileName](const ImportError &e) {
        QString where;
        if (e.line > 0) where = QStringLiteral("Zeile %1").arg(e.line);
        if (e.line > 0 && e.column > 0) where += QStringLiteral(", Spalte %1").arg(e.column);
        ShowMessage(QStringLiteral("Import abgebrochen, nichts wurde geändert: ") + fileName +
                    QLatin1Char('\r') + (where.isEmpty() ? QString() : where + QStringLiteral(": ")) +
                    e.text);
    };
    if (m_params.isEmpty()) return false;
    if (m_table->Online() == omRueckdoku) {
        ShowMessage(QStringLiteral("\"Import\" not available with reverse documentation!"));
        return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        report({0, 0, QStringLiteral("die Datei kann nicht gelesen werden (%1)").arg(file.errorString())});
        return false;
    }
    if (file.size() > kMaxFileBytes) {
        report({0, 0, QStringLiteral("die Datei ist grösser als %1 MB").arg(kMaxFileBytes >> 20)});
        return false;
    }
    // Read-only arrays and those above the user's level take nothing from a file.
    for (const QString &param : std::as_const(m_params)) {
        const int r = m_table->GetRecNo(param + QStringLiteral(".0"), false);
        const int level = r < 0 ? 0 : StrToIntDef(m_table->Cell(r, QStringLiteral("Write-Level")).trimmed(), 0);
        if (level >= 6 || level > m_table->UserLevel()) {
            report({0, 0, QStringLiteral("%1 ist schreibgeschützt").arg(param)});
            return false;
        }
    }
    ImportError error;
    ImportReader reader(m_table, m_params, anonymous);
    if (!reader.read(decodeText(file.readAll()), separator, data.values, data.elements, error)) {
        report(error);
        return false;
    }
    return true;
}

bool TArrayGroup::applyImport(const ImportData &data, const QString &fileName)
{
    if (data.elements != m_arrayLen) {
        if (m_table->Online() == omOnline) {
            ShowMessage(QStringLiteral("Der Import im Online-Betrieb ist nur bei gleicher "
                                       "Array-Länge gestattet."));
            return false;
        }
        if (!changeLength(data.elements, true)) {
            if (data.elements >= 2)
                ShowMessage(QStringLiteral("Import abgebrochen, nichts wurde geändert: ") + fileName +
                            QStringLiteral("\rDie Array-Länge bleibt %1 (die Datei hat %2 Elemente).")
                                .arg(m_arrayLen)
                                .arg(data.elements));
            return false;
        }
    }
    StoreControlsInParaTable();
    ensureRecords(m_arrayLen);
    const std::vector<int> &r = rows();
    const int col = m_table->FindColumn(QStringLiteral("Wert"));
    for (int p = 0; p < m_params.size(); ++p) {
        const auto &column = data.values[size_t(p)];
        for (size_t i = 0; i < column.size(); ++i) {
            const int at = r[size_t(p) * size_t(m_arrayLen) + i];
            if (at < 0 || column[i].isNull()) continue;
            if (m_table->CellAt(at, col) != column[i]) m_table->SetCellAt(at, col, column[i]);
        }
    }
    LoadControlsFromParaTable();
    if (m_table->Online() == omOnline) StoreArraysInTool();
    return true;
}

// --- checksum ----------------------------------------------------------------------------------

quint32 TArrayGroup::CalcCRC32(quint32 count)
{
    if (!m_table) return 0;
    const int n = int(std::min<quint32>(count, quint32(std::max(m_arrayLen, 0))));
    if (n <= 0 || m_params.isEmpty()) return 0;
    StoreControlsInParaTable();
    const tables::ElementValues &values = elementValues();
    const size_t length = size_t(m_arrayLen);
    const size_t used = size_t(n);
    quint32 crc = 0;
    if (used == length) { // the values lie one array after the other, as the checksum reads them
        crc_check(crc, 0, values.littleEndian.data(), quint32(values.littleEndian.size() * 4));
        return crc;
    }
    std::vector<quint32> buffer;
    buffer.reserve(used * size_t(m_params.size()));
    for (size_t p = 0; p < size_t(m_params.size()); ++p)
        buffer.insert(buffer.end(), values.littleEndian.begin() + qsizetype(p * length),
                      values.littleEndian.begin() + qsizetype(p * length + used));
    crc_check(crc, 0, buffer.data(), quint32(buffer.size() * 4));
    return crc;
}

} // namespace drivewiz
