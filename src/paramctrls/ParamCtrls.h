#ifndef DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_H
#define DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_H

#include "drivewiz_enums.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"

#include <QFrame>
#include <QList>
#include <QPointer>

#include <functional>

class QLabel;
class QLineEdit;

namespace drivewiz {

/// The parameter control: a small frame that shows and edits one drive parameter of a
/// parameter table, bound by its coordinate. The coordinate is the caption of
/// `LblKoordinate`; the name is the caption of `LblParaName`.
///
/// This is the part of the control the parameter table works with: coordinate, address,
/// axis, text, write level, the input field and the controls that show the same
/// parameter. Widget choice, validation and posting rules grow on top of it.
class DRIVEWIZ_EXPORT TParaClass : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizKoordinate READ GetKoordinate WRITE SetKoordinate)

public:
    explicit TParaClass(QWidget *parent = nullptr);
    ~TParaClass() override;

    QString GetKoordinate() const;
    virtual void SetKoordinate(const QString &koordinate);
    TParaTable *wizParaSource() const { return m_table; }
    void SetwizParaSource(TParaTable *table);

    quint32 Q7adr() const { return m_q7adr; }
    /// Stores an address typed in hexadecimal, without any check.
    void SetQ7Adresse(const QString &hex);
    QString Achse() const { return m_achse; }
    /// Stores the axis; a text that is no integer becomes "0".
    void SetAchse(const QString &axis);
    int GetwriteLevel() const { return m_writeLevel; }

    /// The shown value (the input field's text; empty without one).
    QString GetText() const;
    void SetText(const QString &text);
    /// The value last set by the program (not typed): what a refused write puts back.
    QString PreviousText() const { return m_previousText; }
    QString GetParamName() const;
    void SetParamName(const QString &name);
    QWidget *GetEditControl() const;
    QLabel *koordinateLabel() const { return m_lblKoordinate; }
    QLabel *paraNameLabel() const { return m_lblParaName; }

    /// Builds the input field from the description row of the coordinate.
    virtual void RebuildParaControl();
    /// Finds the other controls of the form that show the same parameter.
    void SucheGleicheParameter();
    const QList<QPointer<TParaClass>> &SameParameterControls() const { return m_same; }
    void RefreshVisible();
    void RefreshValue();
    void UpdateEinheit();
    void MyOnChange();
    void FontChanged();

    std::function<void(QObject *sender)> OnChange;

private:
    void setRowData(int row);

    QLabel *m_lblKoordinate = nullptr;
    QLabel *m_lblParaName = nullptr;
    QLineEdit *m_edit = nullptr;
    QLabel *m_unit = nullptr;
    QPointer<TParaTable> m_table;
    quint32 m_q7adr = 0;
    QString m_achse = QStringLiteral("0");
    int m_writeLevel = 0;
    QString m_previousText;
    QList<QPointer<TParaClass>> m_same;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_H
