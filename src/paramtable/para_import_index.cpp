#include "paramtable/para_import_index_p.h"

#include <QtEndian>

#include <algorithm>

namespace drivewiz::importdetail {

namespace {

std::string unpackKey(const SortKey &k)
{
    unsigned char bytes[16];
    qToBigEndian(k.hi, bytes);
    qToBigEndian(k.lo, bytes + 8);
    size_t len = 16;
    while (len > 0 && bytes[len - 1] == 0)
        --len;
    return std::string(reinterpret_cast<const char *>(bytes), len);
}

} // namespace

void KeyIndex::clear()
{
    m_rowKeys.reset(1);
    m_longKeys = {};
    m_mainIndex = {};
    m_sortedKeys = {};
    m_valid = false;
}

void KeyIndex::resize(size_t rows)
{
    for (size_t r = rows; r < m_rowKeys.rows() && !m_longKeys.empty(); ++r)
        m_longKeys.erase(r);
    m_rowKeys.resize(rows);
}

void KeyIndex::insertRow(size_t row)
{
    row = std::min(row, rows());
    m_rowKeys.insert(row);
    std::unordered_map<size_t, std::string> moved;
    for (auto &[r, text] : m_longKeys)
        moved[r >= row ? r + 1 : r] = std::move(text);
    m_longKeys = std::move(moved);
    m_valid = false;
}

void KeyIndex::setKey(size_t row, const char *key, size_t len)
{
    *m_rowKeys.row(row) = packKey(key, len);
    if (isLongKey(key, len))
        m_longKeys[row] = std::string(key, len);
    else if (!m_longKeys.empty())
        m_longKeys.erase(row);
}

std::string KeyIndex::key(size_t row) const
{
    if (!m_longKeys.empty()) {
        const auto it = m_longKeys.find(row);
        if (it != m_longKeys.end()) return it->second;
    }
    return unpackKey(packed(row));
}

bool KeyIndex::keyEquals(size_t row, const char *key, size_t len) const
{
    if (!(packed(row) == packKey(key, len))) return false;
    if (m_longKeys.empty() && !isLongKey(key, len)) return true;
    return this->key(row) == std::string(key, len);
}

int KeyIndex::compare(const char *key, size_t len, size_t row) const
{
    const SortKey packed = packKey(key, len);
    if (packed < this->packed(row)) return -1;
    if (this->packed(row) < packed) return 1;
    if (m_longKeys.empty() && !isLongKey(key, len)) return 0;
    return std::string(key, len).compare(this->key(row));
}

bool KeyIndex::lessByText(int a, int b) const
{
    const int c = key(size_t(a)).compare(key(size_t(b)));
    return c != 0 ? c < 0 : a < b;
}

// The rows [from, to) in sort-string order. Description files come mostly in coordinate
// order: rows that keep the order are taken as they come, the few others are sorted on
// their own and merged in from the back.
std::vector<int> KeyIndex::sortedRows(size_t from, size_t to) const
{
    std::vector<int> rows;
    rows.reserve(to - from);
    std::vector<int> others;
    for (size_t i = from; i < to; ++i) {
        if (rows.empty() || !lessRows(int(i), rows.back()))
            rows.push_back(int(i));
        else
            others.push_back(int(i));
    }
    if (others.empty()) return rows;
    std::sort(others.begin(), others.end(), [this](int a, int b) { return lessRows(a, b); });
    size_t i = rows.size();
    size_t j = others.size();
    rows.resize(to - from);
    for (size_t w = rows.size(); j > 0;) {
        if (i > 0 && lessRows(others[j - 1], rows[i - 1]))
            rows[--w] = rows[--i];
        else
            rows[--w] = others[--j];
    }
    return rows;
}

void KeyIndex::rebuild()
{
    m_valid = false;
    m_mainIndex = sortedRows(0, rows());
    m_sortedKeys.resize(m_mainIndex.size());
    for (size_t p = 0; p < m_mainIndex.size(); ++p)
        m_sortedKeys[p] = packed(size_t(m_mainIndex[p]));
    m_valid = true;
}

void KeyIndex::addRows(size_t firstNew)
{
    if (!m_valid || m_mainIndex.size() != firstNew) {
        rebuild();
        return;
    }
    const std::vector<int> added = sortedRows(firstNew, rows());
    size_t i = m_mainIndex.size();
    size_t j = added.size();
    m_mainIndex.resize(rows());
    m_sortedKeys.resize(rows());
    // From the back: an old row with a key equal to a new one stays in front of it.
    for (size_t w = m_mainIndex.size(); j > 0;) {
        const int row = added[j - 1];
        if (i > 0 && lessRows(packed(size_t(row)), row, m_sortedKeys[i - 1], m_mainIndex[i - 1])) {
            --i;
            --w;
            m_mainIndex[w] = m_mainIndex[i];
            m_sortedKeys[w] = m_sortedKeys[i];
        } else {
            --j;
            --w;
            m_mainIndex[w] = row;
            m_sortedKeys[w] = packed(size_t(row));
        }
    }
}

int KeyIndex::rowAt(int p) const
{
    if (p < 0 || size_t(p) >= rows()) return -1;
    // Before the first rebuild the positions are the file order.
    return size_t(p) < m_mainIndex.size() ? m_mainIndex[size_t(p)] : p;
}

// Branch-free binary search: the loop runs log2(n) times whatever the keys.
size_t KeyIndex::packedLowerBound(const SortKey &key) const
{
    size_t n = m_sortedKeys.size();
    if (n == 0) return 0;
    const SortKey *base = m_sortedKeys.data();
    while (n > 1) {
        const size_t half = n / 2;
        base = base[half - 1] < key ? base + half : base;
        n -= half;
    }
    return size_t(base - m_sortedKeys.data()) + (*base < key ? 1 : 0);
}

size_t KeyIndex::lowerBound(const char *key, size_t len) const
{
    const SortKey packed = packKey(key, len);
    size_t p = packedLowerBound(packed);
    if (m_longKeys.empty() && !isLongKey(key, len)) return p;
    // Keys that tie on their first 16 bytes are ordered by their full text.
    const std::string text(key, len);
    while (p < m_sortedKeys.size() && m_sortedKeys[p] == packed &&
           this->key(size_t(m_mainIndex[p])) < text)
        ++p;
    return p;
}

int KeyIndex::find(const char *key, size_t len) const
{
    const size_t p = lowerBound(key, len);
    if (p >= m_sortedKeys.size()) return -1;
    // Compared with the key the index was built from: after a key cell changed, look-ups
    // see the old order until the index is rebuilt.
    if (!isLongKey(key, len)) {
        const SortKey k = packKey(key, len);
        if (m_sortedKeys[p].hi != k.hi || m_sortedKeys[p].lo != k.lo) return -1;
        const size_t row = size_t(m_mainIndex[p]);
        // A long key of the same first bytes is another key.
        return m_longKeys.count(row) == 0 || keyEquals(row, key, len) ? int(p) : -1;
    }
    return keyEquals(size_t(m_mainIndex[p]), key, len) ? int(p) : -1;
}

int KeyIndex::findGroup(char letter) const
{
    const quint64 first = quint64(static_cast<unsigned char>(letter));
    const auto it =
        std::lower_bound(m_sortedKeys.begin(), m_sortedKeys.end(), first,
                         [](const SortKey &k, quint64 g) { return (k.hi >> 56) < g; });
    if (it == m_sortedKeys.end() || (it->hi >> 56) != first) return -1;
    return int(it - m_sortedKeys.begin());
}

// --- merges ---------------------------------------------------------------------------

bool MergeLookup::contains(const char *key, size_t len)
{
    return indexedContains(key, len) || ascendingContains(key, len) || hashedContains(key, len);
}

bool MergeLookup::indexedContains(const char *key, size_t len)
{
    if (m_index.hasLongKeys() || isLongKey(key, len)) return m_index.find(key, len) >= 0;
    const std::vector<SortKey> &keys = m_index.sortedKeys();
    const SortKey k = packKey(key, len);
    const size_t n = keys.size();
    if (n == 0 || keys.back() < k) {
        m_hint = n; // beyond every key: appended rows of a merge mostly land here
        return false;
    }
    // Gallop from the last hit, then search the bracket found.
    size_t lo = 0;
    size_t hi = std::min(n, m_hint + 1);
    if (m_hint < n && !(k < keys[m_hint])) {
        lo = m_hint;
        size_t step = 1;
        while (lo + step < n && !(k < keys[lo + step])) {
            lo += step;
            step *= 2;
        }
        hi = std::min(n, lo + step + 1);
    }
    const auto it = std::lower_bound(keys.begin() + std::ptrdiff_t(lo),
                                     keys.begin() + std::ptrdiff_t(hi), k);
    m_hint = size_t(it - keys.begin());
    return it != keys.end() && *it == k;
}

namespace {

// Every input bit reaches the low bits the table uses (keys differ mostly in a few digits).
quint64 mix(quint64 k)
{
    k ^= k >> 33;
    k *= 0xFF51AFD7ED558CCDull;
    k ^= k >> 33;
    k *= 0xC4CEB9FE1A85EC53ull;
    return k ^ (k >> 33);
}

} // namespace

size_t MergeLookup::hash(const SortKey &k)
{
    return size_t(mix(k.hi ^ mix(k.lo)));
}

bool MergeLookup::ascendingContains(const char *key, size_t len) const
{
    if (m_ascending.empty() || m_index.compare(key, len, size_t(m_ascending.back())) > 0)
        return false;
    const auto it = std::lower_bound(m_ascending.begin(), m_ascending.end(), 0,
                                     [&](int row, int) { return m_index.compare(key, len, size_t(row)) > 0; });
    return it != m_ascending.end() && m_index.compare(key, len, size_t(*it)) == 0;
}

bool MergeLookup::hashedContains(const char *key, size_t len) const
{
    if (m_slots.empty()) return false;
    const SortKey packed = packKey(key, len);
    for (size_t i = hash(packed) & m_mask;; i = (i + 1) & m_mask) {
        if (m_slots[i] < 0) return false;
        if (m_index.keyEquals(size_t(m_slots[i]), key, len)) return true;
    }
}

void MergeLookup::add(size_t row)
{
    const std::string key = m_index.hasLongKeys() ? m_index.key(row) : std::string();
    const bool ascending =
        m_ascending.empty() ||
        (m_index.hasLongKeys()
             ? m_index.compare(key.data(), key.size(), size_t(m_ascending.back())) > 0
             : m_index.packed(size_t(m_ascending.back())) < m_index.packed(row));
    if (ascending)
        m_ascending.push_back(int(row));
    else
        insertHashed(row);
}

void MergeLookup::insertHashed(size_t row)
{
    if ((m_count + 1) * 2 > m_slots.size()) {
        std::vector<int> previous = std::move(m_slots);
        m_slots.assign(std::max<size_t>(256, previous.size() * 2), -1);
        m_mask = m_slots.size() - 1;
        m_count = 0;
        for (const int r : previous) {
            if (r >= 0) insertHashed(size_t(r));
        }
    }
    size_t i = hash(m_index.packed(row)) & m_mask;
    while (m_slots[i] >= 0)
        i = (i + 1) & m_mask;
    m_slots[i] = int(row);
    ++m_count;
}

} // namespace drivewiz::importdetail
