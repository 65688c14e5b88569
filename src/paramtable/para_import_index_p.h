#ifndef DRIVEWIZ_PARAMTABLE_PARA_IMPORT_INDEX_P_H
#define DRIVEWIZ_PARAMTABLE_PARA_IMPORT_INDEX_P_H

// The sort strings of an import table and its main index.
//
// A sort string is kept as its first 16 bytes packed into two big-endian numbers, so
// comparing two of them is comparing numbers; the few strings longer than 16 bytes, or
// with a NUL byte in them, keep their full text aside and are compared by it when the
// packed bytes tie. Ordering is plain byte order of the full strings either way.

#include "paramtable/para_import_p.h"

#include <QtEndian>
#include <QtGlobal>

#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

namespace drivewiz::importdetail {

struct SortKey
{
    quint64 hi = 0;
    quint64 lo = 0;
};

#if defined(__SIZEOF_INT128__)
__extension__ typedef unsigned __int128 KeyWord;
inline KeyWord keyWord(const SortKey &k)
{
    return (KeyWord(k.hi) << 64) | k.lo;
}
inline bool operator<(const SortKey &a, const SortKey &b)
{
    return keyWord(a) < keyWord(b);
}
#else
inline bool operator<(const SortKey &a, const SortKey &b)
{
    return a.hi < b.hi || (a.hi == b.hi && a.lo < b.lo);
}
#endif
inline bool operator==(const SortKey &a, const SortKey &b)
{
    return a.hi == b.hi && a.lo == b.lo;
}

/// The first 16 bytes of a text, big-endian, zero-padded.
inline SortKey packKey(const char *key, size_t len)
{
    unsigned char bytes[16] = {};
    std::memcpy(bytes, key, len < 16 ? len : 16);
    return SortKey{qFromBigEndian<quint64>(bytes), qFromBigEndian<quint64>(bytes + 8)};
}

/// Whether a sort string needs its full text beside the packed bytes.
inline bool isLongKey(const char *key, size_t len)
{
    return len > 16 || std::memchr(key, 0, len) != nullptr;
}

class KeyIndex
{
public:
    void clear();
    size_t rows() const { return m_rowKeys.rows(); }
    /// Grows (rows get the empty key) or shrinks to the given number of rows.
    void resize(size_t rows);
    /// Inserts a row with the empty key before `row`; the main index is then out of date.
    void insertRow(size_t row);
    void setKey(size_t row, const char *key, size_t len);
    /// Adds a row at the end with the given key.
    void appendKey(const char *key, size_t len)
    {
        *m_rowKeys.push() = packKey(key, len);
        if (isLongKey(key, len)) m_longKeys[rows() - 1] = std::string(key, len);
    }
    std::string key(size_t row) const;
    const SortKey &packed(size_t row) const { return *m_rowKeys.row(row); }
    bool keyEquals(size_t row, const char *key, size_t len) const;
    /// A sort string against a row's: negative, zero or positive.
    int compare(const char *key, size_t len, size_t row) const;
    bool hasLongKeys() const { return !m_longKeys.empty(); }

    // --- the main index: rows in sort-string order; equal strings keep file order -------
    size_t positions() const { return m_mainIndex.size(); }
    bool valid() const { return m_valid; }
    void invalidate() { m_valid = false; }
    void rebuild();
    /// Puts the rows appended since the index was built ([firstNew, rows())) into it.
    void addRows(size_t firstNew);
    /// The row at a position; positions beyond the index are rows in file order.
    int rowAt(int p) const;
    /// The first position whose sort string is not less than the given one.
    size_t lowerBound(const char *key, size_t len) const;
    /// The first position with exactly this sort string, or -1.
    int find(const char *key, size_t len) const;
    /// The first position of a group (the first byte of the sort string), or -1.
    int findGroup(char letter) const;
    const std::vector<SortKey> &sortedKeys() const { return m_sortedKeys; }

private:
    // Packed bytes first; on a tie the full texts (only long keys differ there), then file
    // order.
    bool lessRows(const SortKey &ka, int a, const SortKey &kb, int b) const
    {
        if (ka < kb) return true;
        if (kb < ka) return false;
        return m_longKeys.empty() ? a < b : lessByText(a, b);
    }
    bool lessRows(int a, int b) const
    {
        return lessRows(packed(size_t(a)), a, packed(size_t(b)), b);
    }
    bool lessByText(int a, int b) const;
    std::vector<int> sortedRows(size_t from, size_t to) const;
    size_t packedLowerBound(const SortKey &key) const;

    RowChunks<SortKey> m_rowKeys;                     // file order
    std::unordered_map<size_t, std::string> m_longKeys; // row -> full text of a long key
    std::vector<int> m_mainIndex;                     // rows in sort-string order
    std::vector<SortKey> m_sortedKeys;                // m_rowKeys in main-index order
    bool m_valid = false;
};

/// Membership tests during a merge. Merge files come mostly sorted, so: the rows indexed
/// before the merge are looked up from where the last look-up ended; the rows the merge
/// appends in ascending order are a sorted list that a larger key need not search; the
/// few others are hashed.
class MergeLookup
{
public:
    explicit MergeLookup(const KeyIndex &index) : m_index(index) {}
    bool contains(const char *key, size_t len);
    /// A row the merge appended (its key set).
    void add(size_t row);

private:
    bool indexedContains(const char *key, size_t len);
    bool ascendingContains(const char *key, size_t len) const;
    bool hashedContains(const char *key, size_t len) const;
    void insertHashed(size_t row);
    static size_t hash(const SortKey &k);

    const KeyIndex &m_index;
    size_t m_hint = 0;
    std::vector<int> m_ascending; // appended rows, keys strictly ascending
    std::vector<int> m_slots;     // other appended rows; -1 for a free slot
    size_t m_mask = 0;
    size_t m_count = 0;
};

} // namespace drivewiz::importdetail

#endif // DRIVEWIZ_PARAMTABLE_PARA_IMPORT_INDEX_P_H
