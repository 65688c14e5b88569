#ifndef DRIVEWIZ_PARAMCTRLS_ARRAYPARA_H
#define DRIVEWIZ_PARAMCTRLS_ARRAYPARA_H

#include "paramctrls/ParamCtrls.h"

#include <QPointer>

namespace drivewiz {

/// A parameter control for one element of an array parameter, the element its array
/// group (wizArrayGroup, a TArrayGroup on the same form) has current.
///
/// wizKoordinate is the array's coordinate ("J10"); the control shows and edits the
/// element record "J10.<element>", so its coordinate label reads "J10.3": typing,
/// checking, posting online and the drive's pushes work on that element as for any
/// other parameter. The group moves the control from element to element with
/// GetArrayElement() and stores what it shows with SetArrayElement().
class DRIVEWIZ_EXPORT TArrayPara : public TParaClass
{
    Q_OBJECT
    Q_PROPERTY(QString wizKoordinate READ ArrayKoordinate WRITE SetKoordinate)
    Q_PROPERTY(QString wizArrayGroup READ wizArrayGroupName WRITE SetwizArrayGroupName)

public:
    explicit TArrayPara(QWidget *parent = nullptr);
    ~TArrayPara() override;

    /// The array's coordinate, without element ("J10").
    QString ArrayKoordinate() const { return m_array; }
    /// Takes the array's coordinate; an element given with it ("J10.3") is dropped.
    void SetKoordinate(const QString &koordinate) override;
    /// The element shown.
    int Element() const { return m_element; }
    /// The record of an element: "J10.3".
    QString RecordName(int element) const;

    /// The group (any object with an integer property "ArrayIndex"); by name on the form.
    QObject *wizArrayGroup() const { return m_group; }
    void SetwizArrayGroup(QObject *group);
    QString wizArrayGroupName() const;
    void SetwizArrayGroupName(const QString &objectName);

    /// Shows an element: its record's value and address. An element the table does not
    /// hold is reported and the control stays where it was; false then.
    bool GetArrayElement(int element);
    /// Writes the control's text into the record of an element; false (reported) when
    /// the table does not hold it.
    bool SetArrayElement(int element);

    void Loaded() override;

private:
    int elementRow(int element) const;

    QString m_array;
    int m_element = 0;
    QPointer<QObject> m_group;
    QString m_groupName;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMCTRLS_ARRAYPARA_H
