#ifndef DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_P_H
#define DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_P_H

// Indexes of all parameter controls of the process, by address and by coordinate, so a
// pushed change or a mirror search does not walk whole forms. Entries are kept right by
// the controls themselves (address and coordinate setters, destructor); the form a
// control sits on is checked at look-up, so re-parenting needs no bookkeeping.

#include <QHash>
#include <QList>
#include <QRect>
#include <QString>
#include <QWidget>

namespace drivewiz {

class TParaClass;

namespace paractl {

class Registry
{
public:
    static Registry &instance();
    void setAddress(TParaClass *control, quint32 before, quint32 after);
    void setKoordinate(TParaClass *control, const QString &before, const QString &after);
    void remove(TParaClass *control, quint32 address, const QString &koordinate);
    QList<TParaClass *> byAddress(quint32 address) const { return m_byAddress.values(address); }
    QList<TParaClass *> byKoordinate(const QString &koordinate) const;

private:
    QMultiHash<quint32, TParaClass *> m_byAddress;
    QMultiHash<QString, TParaClass *> m_byKoordinate;
};

/// Where the parts of a parameter control go, worked out from their fonts and texts for a
/// frame of a given width; the drive tool's positions are the minimums.
struct CtrlLayout
{
    QRect koordinate;
    QRect name;
    QRect input;
    QRect unit;
    QRect info;
    QPoint bits;       ///< top left of the first (highest) bit box
    QSize bitBox;      ///< size of one bit box; the boxes stand one width apart
    int bitLabelHeight = 10;
    int width = 0;     ///< the frame's width: at least what the texts need
    int minWidth = 0;  ///< what the texts and fields need
    int height = 0;    ///< the frame's height (CalcHeight)
};

/// The key of a coordinate in the index: trimmed and upper-cased.
QString koordinateKey(const QString &koordinate);

/// Whether `a` comes before `b` in a depth-first walk of `root`'s children (children in
/// their order, a container's children before its next sibling).
bool depthFirstBefore(const QWidget *root, const QWidget *a, const QWidget *b);

} // namespace paractl
} // namespace drivewiz

#endif // DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_P_H
