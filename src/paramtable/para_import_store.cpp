#include "paramtable/para_import_store_p.h"
#include "platform/textcodec.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace drivewiz::importdetail {

namespace {

// Each store (and each reset) counts its changes from a base of its own, so a revision
// names one store's cells even when a store is made where another was.
quint64 freshRevisionBase()
{
    static std::atomic<quint64> next{1};
    return next.fetch_add(1) << 32;
}

} // namespace

CellStore::CellStore() : m_revision(freshRevisionBase()) {}

void CellStore::reset(int columns)
{
    m_revision = freshRevisionBase();
    m_columns = std::max(columns, 0);
    m_rowStart.reset(1);
    m_ends.reset(size_t(m_columns));
    m_blocks.clear();
    m_used = m_capacity = 0;
    m_scratch = {};
    m_inScratch = false;
    m_overrides = {};
}

void CellStore::resizeRows(size_t rows)
{
    changed();
    for (size_t r = rows; r < m_rowStart.rows(); ++r)
        dropOverrides(r);
    m_rowStart.resize(rows);
    m_ends.resize(rows);
}

void CellStore::insertRow(size_t row)
{
    changed();
    row = std::min(row, rows());
    m_rowStart.insert(row);
    m_ends.insert(row);
    // Overwritten cells are keyed by row: those behind the new row move down by one.
    std::unordered_map<quint64, QString> moved;
    for (auto &[key, value] : m_overrides) {
        const quint64 r = key >> 32;
        moved[r >= row ? key + (quint64(1) << 32) : key] = std::move(value);
    }
    m_overrides = std::move(moved);
}

char *CellStore::rowBuffer(size_t bytes)
{
    m_inScratch = bytes > kBlockSize;
    if (m_inScratch) {
        m_scratch.resize(bytes);
        return m_scratch.data();
    }
    if (m_blocks.empty() || m_used + std::max<size_t>(bytes, 1) > m_capacity) {
        if (m_blocks.size() >= kMaxBlocks) return nullptr;
        // Small tables stay small; large ones get full blocks, which the allocator reuses.
        m_capacity = std::clamp(std::max(bytes, 2 * m_capacity), size_t(4096), kBlockSize);
        m_blocks.emplace_back(new char[m_capacity]);
        m_used = 0;
    }
    return m_blocks.back().get() + m_used;
}

void CellStore::commitRow(size_t row, const quint32 *starts)
{
    changed();
    const size_t total = starts[m_columns];
    const char *written = m_inScratch ? m_scratch.data() : m_blocks.back().get() + m_used;
    if (total > kMaxRowText || (m_inScratch && !rowBuffer(total))) {
        std::vector<QByteArray> cells;
        for (int c = 0; c < m_columns; ++c)
            cells.emplace_back(written + starts[c], qsizetype(starts[c + 1] - starts[c]));
        setLongRow(row, cells);
        return;
    }
    if (written != m_blocks.back().get() + m_used) // from the scratch buffer into a block
        std::memcpy(m_blocks.back().get() + m_used, written, total);
    dropOverrides(row);
    *m_rowStart.row(row) = quint32(((m_blocks.size() - 1) << 16) | m_used);
    quint16 *ends = m_ends.row(row);
    for (int c = 0; c < m_columns; ++c)
        ends[c] = quint16(starts[c + 1]);
    m_used += total;
}

void CellStore::appendRow(const quint32 *starts)
{
    changed();
    const size_t total = starts[m_columns];
    if (m_inScratch || total > kMaxRowText) {
        m_rowStart.push()[0] = 0;
        std::fill_n(m_ends.push(), m_columns, quint16(0));
        commitRow(rows() - 1, starts);
        return;
    }
    *m_rowStart.push() = quint32(((m_blocks.size() - 1) << 16) | m_used);
    quint16 *ends = m_ends.push();
    for (int c = 0; c < m_columns; ++c)
        ends[c] = quint16(starts[c + 1]);
    m_used += total;
}

void CellStore::setRow(size_t row, const std::vector<QByteArray> &cells)
{
    size_t total = 0;
    for (const QByteArray &cell : cells)
        total += size_t(cell.size());
    char *out = total <= kMaxRowText ? rowBuffer(total) : nullptr;
    if (!out) {
        setLongRow(row, cells);
        return;
    }
    std::vector<quint32> starts(size_t(m_columns) + 1, 0);
    size_t w = 0;
    for (int c = 0; c < m_columns; ++c) {
        starts[size_t(c)] = quint32(w);
        if (size_t(c) < cells.size()) {
            std::memcpy(out + w, cells[size_t(c)].constData(), size_t(cells[size_t(c)].size()));
            w += size_t(cells[size_t(c)].size());
        }
    }
    starts[size_t(m_columns)] = quint32(w);
    commitRow(row, starts.data());
}

// A row of more than 64 KB of text keeps all its cells aside.
void CellStore::setLongRow(size_t row, const std::vector<QByteArray> &cells)
{
    changed();
    dropOverrides(row);
    *m_rowStart.row(row) = kOverridden;
    std::fill_n(m_ends.row(row), m_columns, quint16(0));
    for (int c = 0; c < m_columns && size_t(c) < cells.size(); ++c)
        m_overrides[overrideKey(row, c)] = utf8Text(cells[size_t(c)]);
}

void CellStore::dropOverrides(size_t row)
{
    quint32 &start = *m_rowStart.row(row);
    if (!(start & kOverridden)) return;
    for (int c = 0; c < m_columns; ++c)
        m_overrides.erase(overrideKey(row, c));
    start &= ~kOverridden;
}

const char *CellStore::rowText(size_t row) const
{
    const quint32 start = *m_rowStart.row(row) & ~kOverridden;
    return m_blocks[start >> 16].get() + (start & 0xFFFFu);
}

QString CellStore::text(size_t row, int column) const
{
    if (row >= rows() || column < 0 || column >= m_columns) return QString();
    if (*m_rowStart.row(row) & kOverridden) {
        const auto it = m_overrides.find(overrideKey(row, column));
        if (it != m_overrides.end()) return it->second;
    }
    const quint16 *ends = m_ends.row(row);
    const quint16 begin = column > 0 ? ends[column - 1] : 0;
    if (ends[column] == begin) return QString();
    return utf8Text(rowText(row) + begin, ends[column] - begin);
}

QByteArray CellStore::utf8(size_t row, int column) const
{
    if (row >= rows() || column < 0 || column >= m_columns) return QByteArray();
    if (*m_rowStart.row(row) & kOverridden) {
        const auto it = m_overrides.find(overrideKey(row, column));
        if (it != m_overrides.end()) return it->second.toUtf8();
    }
    const quint16 *ends = m_ends.row(row);
    const quint16 begin = column > 0 ? ends[column - 1] : 0;
    if (ends[column] == begin) return QByteArray();
    return QByteArray::fromRawData(rowText(row) + begin, ends[column] - begin);
}

void CellStore::setText(size_t row, int column, const QString &value)
{
    if (row >= rows() || column < 0 || column >= m_columns) return;
    if (text(row, column) == value) return; // no change: those who keep what they read keep it
    changed();
    *m_rowStart.row(row) |= kOverridden;
    m_overrides[overrideKey(row, column)] = value;
}

} // namespace drivewiz::importdetail
