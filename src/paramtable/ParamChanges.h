#ifndef DRIVEWIZ_PARAMTABLE_PARAMCHANGES_H
#define DRIVEWIZ_PARAMTABLE_PARAMCHANGES_H

#include "paramtable/ParamSet.h"

#include <QObject>
#include <QPointer>
#include <QSet>

namespace drivewiz {

class TParaTable;

/// The values of a table when its wizard opened, and which parameters now differ from
/// them. The wizard calls takeOpeningValues() once its values are read; from then on
/// every write of the table and every value it reads from the host (a refresh, a pushed
/// change) is looked at, and changedStateChanged() tells when a parameter becomes
/// changed or unchanged again. recheck() compares all again, e.g. after a host wrote
/// "Wert" cells directly.
class DRIVEWIZ_EXPORT ParamChanges : public QObject
{
    Q_OBJECT

public:
    explicit ParamChanges(TParaTable *table, QObject *parent = nullptr);

    /// Takes every row's current value as its value at opening; nothing is changed then.
    void takeOpeningValues();
    bool hasOpeningValues() const { return m_taken; }
    const ParamSet &openingValues() const { return m_opening; }
    /// The value at opening, or a null text for a parameter the table did not have.
    QString openingValue(const ParamKey &key) const;

    /// Whether the parameter's current value differs from its value at opening.
    bool isChanged(const ParamKey &key) const;
    /// The changed parameters, all or those among `among`, in table order.
    QList<ParamKey> changed(const QList<ParamKey> &among = {}) const;
    int changedCount(const QList<ParamKey> &among = {}) const;

    /// Compares every parameter again (after the table read values on its own).
    void recheck();
    /// Compares one parameter again.
    void recheck(const ParamKey &key);

Q_SIGNALS:
    void changedStateChanged(const drivewiz::ParamKey &key, bool changed);
    /// The set of changed parameters changed (for counts).
    void changesChanged();

private:
    bool differs(const ParamKey &key) const;
    void update(const ParamKey &key, bool emitCount);

    QPointer<TParaTable> m_table;
    ParamSet m_opening;
    QSet<ParamKey> m_changed;
    bool m_taken = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARAMCHANGES_H
