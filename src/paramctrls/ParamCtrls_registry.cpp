#include "paramctrls/ParamCtrls_p.h"

#include "paramtable/coordinates.h"

#include <algorithm>

namespace drivewiz::paractl {

Registry &Registry::instance()
{
    static Registry registry;
    return registry;
}

void Registry::setAddress(TParaClass *control, quint32 before, quint32 after)
{
    if (before == after) return;
    m_byAddress.remove(before, control);
    if (after != 0) m_byAddress.insert(after, control);
}

void Registry::setKoordinate(TParaClass *control, const QString &before, const QString &after)
{
    const QString oldKey = koordinateKey(before);
    const QString newKey = koordinateKey(after);
    if (oldKey == newKey) return;
    m_byKoordinate.remove(oldKey, control);
    if (!newKey.isEmpty()) m_byKoordinate.insert(newKey, control);
}

void Registry::remove(TParaClass *control, quint32 address, const QString &koordinate)
{
    m_byAddress.remove(address, control);
    m_byKoordinate.remove(koordinateKey(koordinate), control);
}

QList<TParaClass *> Registry::byKoordinate(const QString &koordinate) const
{
    return m_byKoordinate.values(koordinateKey(koordinate));
}

QString koordinateKey(const QString &koordinate)
{
    return koordinate.trimmed().toUpper();
}

namespace {

// Positions of the widget and its ancestors among their siblings, from the root down.
QList<int> pathFrom(const QWidget *root, const QWidget *w)
{
    QList<int> path;
    for (const QObject *o = w; o && o != root; o = o->parent()) {
        const QObject *parent = o->parent();
        path.prepend(parent ? int(parent->children().indexOf(const_cast<QObject *>(o))) : 0);
    }
    return path;
}

} // namespace

bool depthFirstBefore(const QWidget *root, const QWidget *a, const QWidget *b)
{
    const QList<int> pa = pathFrom(root, a);
    const QList<int> pb = pathFrom(root, b);
    return std::lexicographical_compare(pa.begin(), pa.end(), pb.begin(), pb.end());
}

} // namespace drivewiz::paractl
