#ifndef DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H
#define DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H

// Byte-level helpers of the import table: the line reader, the CSV field scanner and the
// sort-string builder, working on UTF-8 without allocating. They agree with
// ExtractCSVWord and TImportTable::BuildSortString (the tests check that on random lines).

#include <QString>
#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace drivewiz::importdetail {

/// Plain values kept per row (`width` of them a row) in chunks of 1024 rows. Chunks come
/// from the ordinary heap, so memory a freed table gives back is used again by the next
/// one, and growing never copies what is there.
template<typename T>
class RowChunks
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    static constexpr size_t kShift = 10;
    static constexpr size_t kChunkRows = size_t(1) << kShift;

    /// Empties the array and sets the values per row.
    void reset(size_t width)
    {
        m_chunks.clear();
        m_rows = 0;
        m_width = width;
    }
    size_t rows() const { return m_rows; }
    T *row(size_t r) { return m_chunks[r >> kShift].get() + (r & (kChunkRows - 1)) * m_width; }
    const T *row(size_t r) const
    {
        return m_chunks[r >> kShift].get() + (r & (kChunkRows - 1)) * m_width;
    }
    /// Grows (new rows are zero) or shrinks.
    void resize(size_t rows)
    {
        while (m_chunks.size() * kChunkRows < rows)
            m_chunks.emplace_back(new T[kChunkRows * std::max<size_t>(m_width, 1)]);
        for (size_t r = m_rows; r < rows; ++r)
            std::memset(static_cast<void *>(row(r)), 0, m_width * sizeof(T));
        m_rows = rows;
    }
    /// Appends a row (not cleared) and returns it.
    T *push()
    {
        if (m_rows == m_chunks.size() * kChunkRows)
            m_chunks.emplace_back(new T[kChunkRows * std::max<size_t>(m_width, 1)]);
        return row(m_rows++);
    }
    /// Inserts a zero row before `r`.
    void insert(size_t r)
    {
        resize(m_rows + 1);
        for (size_t i = m_rows - 1; i > r; --i)
            std::memcpy(static_cast<void *>(row(i)), row(i - 1), m_width * sizeof(T));
        std::memset(static_cast<void *>(row(r)), 0, m_width * sizeof(T));
    }

private:
    std::vector<std::unique_ptr<T[]>> m_chunks;
    size_t m_rows = 0;
    size_t m_width = 1;
};

/// One field of a CSV line: [begin, end) in the line.
struct FieldSpan
{
    size_t begin;
    size_t end;
};

/// Scans up to `maxFields` fields of a line the way ExtractCSVWord reads them (one
/// delimiter skipped, leading blanks dropped, a quoted field ends at the next quote and
/// the rest up to the delimiter is dropped). Returns the number of fields found; sets
/// `unterminated` when a quote is not closed.
size_t scanCsvFields(const char *line, size_t len, char delimiter, FieldSpan *fields,
                     size_t maxFields, bool &unterminated);

/// Bytes the field copy may write behind the copied text.
constexpr size_t kCopySlack = 32;

/// Splits a buffer into lines (CR, LF and CR LF each end one) and copies the fields of a
/// line. While it looks for the line end it also notes where the delimiters, quotes,
/// blanks and bytes >= 0x80 of a line are, so copying a line's fields need not look at
/// each byte again.
class CsvLineReader
{
public:
    CsvLineReader(const char *data, size_t size) : m_data(data), m_size(size) {}

    /// The delimiter the following lines are scanned for.
    void setDelimiter(char delimiter) { m_delimiter = delimiter; }
    /// Moves to the next line; false at the end of the buffer.
    bool next();
    const char *line() const { return m_data + m_start; }
    size_t length() const { return m_len; }

    /// Copies the first `columns` fields of the current line one after the other to `out`,
    /// as ExtractCSVWord reads them; starts[c] becomes the offset of field c in `out`,
    /// starts[columns] the end (missing fields are empty). With `cp1252`, bytes >= 0x80 are
    /// Windows-1252 and become UTF-8. `out` needs room for (cp1252 ? 3 : 1) * length() +
    /// kCopySlack bytes. Returns the bytes written.
    size_t copyFields(bool cp1252, char *out, quint32 *starts, size_t columns,
                      bool &unterminated) const;
    /// The first fields of the current line, as scanCsvFields finds them.
    size_t scanFields(FieldSpan *fields, size_t maxFields, bool &unterminated) const;

private:
    static constexpr size_t kMaskWords = 8; // lines of up to 512 bytes carry masks

    void scanLine();
    const quint64 *regularLine() const;
    bool findRegular() const;
    bool copyRegular(bool cp1252, char *out, quint32 *starts, size_t columns, size_t &written) const;

    const char *m_data;
    size_t m_size;
    size_t m_pos = 0;
    size_t m_start = 0;
    size_t m_len = 0;
    char m_delimiter = 0;
    bool m_masked = false;          // the masks below describe the current line
    mutable signed char m_regular = -1; // -1: not known yet; else whether the line is regular
    mutable quint64 m_fieldEnds[kMaskWords]; // of a regular line: delimiters ending fields
    quint64 m_delims[kMaskWords];
    quint64 m_quotes[kMaskWords];
    quint64 m_blanks[kMaskWords];
    quint64 m_highs[kMaskWords];
};

/// The field copy of CsvLineReader without masks, for any line: `line` must stay readable
/// for `len` bytes only.
size_t copyCsvFieldsPlain(const char *line, size_t len, char delimiter, bool cp1252, char *out,
                          quint32 *starts, size_t columns, bool &unterminated);

/// A sort string built from a row's coordinate, axis and number cells (UTF-8), held in a
/// small inline buffer. Plain ASCII takes a fast path; anything else goes through
/// TImportTable::BuildSortString.
class SortKeyText
{
public:
    SortKeyText() = default;
    SortKeyText(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                const char *nummer, size_t nummerLen)
    {
        build(koord, koordLen, achse, achseLen, nummer, nummerLen);
    }
    SortKeyText(const SortKeyText &) = delete;
    SortKeyText &operator=(const SortKeyText &) = delete;

    void build(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
               const char *nummer, size_t nummerLen);
    void clear()
    {
        m_large.clear();
        m_size = 0;
        m_plain = false;
    }
    const char *data() const { return m_large.empty() ? m_small : m_large.data(); }
    size_t size() const { return m_size; }
    std::string str() const { return std::string(data(), m_size); }
    /// The coordinate was a plain one (letter, digits, perhaps "." and digits, at least
    /// three characters): IsKoordinate holds without looking again.
    bool plainCoordinate() const { return m_plain; }

private:
    bool buildPlain(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                    const char *nummer, size_t nummerLen);

    char m_small[48];
    bool m_plain = false;
    std::string m_large;
    size_t m_size = 0;
};

/// The sort string as a std::string (see SortKeyText).
std::string sortKey(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                    const char *nummer, size_t nummerLen);

/// Copies a text of at most `capacity` plain ASCII characters into `buffer`; false (and
/// nothing usable) for longer or non-ASCII text.
bool toAscii(const QString &text, char *buffer, size_t capacity, size_t &length);

/// IsKoordinate on UTF-8 bytes.
bool isKoordinateBytes(const char *s, size_t len);

/// Whether the trimmed text is a 32-bit integer (IsInteger on UTF-8 bytes).
bool isIntegerBytes(const char *s, size_t len);

} // namespace drivewiz::importdetail

#endif // DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H
