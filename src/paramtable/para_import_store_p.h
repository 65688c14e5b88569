#ifndef DRIVEWIZ_PARAMTABLE_PARA_IMPORT_STORE_P_H
#define DRIVEWIZ_PARAMTABLE_PARA_IMPORT_STORE_P_H

// The cells of an import table: every row's text in blocks of 64 KB, a row's cells one
// after the other, and per row its start and the end of each cell.

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include "paramtable/para_import_p.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace drivewiz::importdetail {

class CellStore
{
public:
    /// A row's text never spans two blocks; longer rows keep their cells aside.
    static constexpr size_t kBlockSize = size_t(1) << 16;
    static constexpr size_t kMaxRowText = kBlockSize - 1;

    CellStore();

    /// Empties the store and sets the number of columns.
    void reset(int columns);
    /// Changes with every change of a cell or of the rows, and differs between stores:
    /// equal numbers mean the same unchanged cells.
    quint64 revision() const { return m_revision; }
    int columns() const { return m_columns; }
    size_t rows() const { return m_rowStart.rows(); }

    /// Grows (with empty rows) or shrinks to the given number of rows.
    void resizeRows(size_t rows);
    /// Inserts an empty row before `row`.
    void insertRow(size_t row);

    /// Room for a row of up to `bytes` bytes of text (plus copy slack); nullptr when the
    /// text store is full (2 GB).
    char *rowBuffer(size_t bytes);
    /// Makes the text written at rowBuffer() row `row`: cell c is [starts[c], starts[c + 1]).
    void commitRow(size_t row, const quint32 *starts);
    /// The same for a new row at the end.
    void appendRow(const quint32 *starts);
    /// Sets every cell of a row.
    void setRow(size_t row, const std::vector<QByteArray> &cells);

    QString text(size_t row, int column) const;
    /// The UTF-8 bytes of a cell; they point into the store (valid until it changes) unless
    /// the cell was overwritten.
    QByteArray utf8(size_t row, int column) const;
    void setText(size_t row, int column, const QString &value);

private:
    // m_rowStart: block << 16 | offset of the row's text; the top bit marks a row with
    // overwritten cells, whose text is in m_overrides.
    static constexpr quint32 kOverridden = 0x80000000u;
    static constexpr size_t kMaxBlocks = 0x8000;

    const char *rowText(size_t row) const;
    static quint64 overrideKey(size_t row, int column)
    {
        return (quint64(row) << 32) | quint32(column);
    }
    void dropOverrides(size_t row);
    void setLongRow(size_t row, const std::vector<QByteArray> &cells);

    void changed() { ++m_revision; }

    int m_columns = 0;
    quint64 m_revision = 0;
    RowChunks<quint32> m_rowStart;
    RowChunks<quint16> m_ends; // m_columns per row: end of each cell in the row's text
    std::vector<std::unique_ptr<char[]>> m_blocks;
    size_t m_used = 0;     // bytes used in the last block
    size_t m_capacity = 0; // its size: blocks start small and double up to kBlockSize
    std::vector<char> m_scratch; // a row too long for a block is written here
    bool m_inScratch = false;
    std::unordered_map<quint64, QString> m_overrides;
};

} // namespace drivewiz::importdetail

#endif // DRIVEWIZ_PARAMTABLE_PARA_IMPORT_STORE_P_H
