#include "paramctrls/ParamCtrls.h"

#include "paramtable/coordinates.h"
#include "tables/Divers.h"

#include <QLabel>
#include <QLineEdit>

namespace drivewiz {

TParaClass::TParaClass(QWidget *parent)
    : QFrame(parent), m_lblKoordinate(new QLabel(this)), m_lblParaName(new QLabel(this))
{
    m_lblKoordinate->setObjectName(QStringLiteral("LblKoordinate"));
    m_lblParaName->setObjectName(QStringLiteral("LblParaName"));
    m_lblKoordinate->setGeometry(3, 5, 33, 13);
    m_lblParaName->setGeometry(36, 5, 141, 13);
    QFont bold = m_lblKoordinate->font();
    bold.setBold(true);
    m_lblKoordinate->setFont(bold);
    resize(177, 39);
}

TParaClass::~TParaClass() = default;

QString TParaClass::GetKoordinate() const
{
    return m_lblKoordinate->text();
}

void TParaClass::SetKoordinate(const QString &koordinate)
{
    if (m_lblKoordinate->text() == koordinate) return;
    m_lblKoordinate->setText(koordinate);
    if (!isLoading() && !isDesigning() && m_table) RebuildParaControl();
}

void TParaClass::SetwizParaSource(TParaTable *table)
{
    m_table = table;
}

void TParaClass::SetQ7Adresse(const QString &hex)
{
    m_q7adr = quint32(HexToInt(hex));
}

void TParaClass::SetAchse(const QString &axis)
{
    m_achse = IsInteger(axis) ? axis.trimmed() : QStringLiteral("0");
}

QString TParaClass::GetText() const
{
    return m_edit ? m_edit->text() : QString();
}

void TParaClass::SetText(const QString &text)
{
    m_previousText = text;
    if (!m_edit || m_edit->text() == text) return;
    m_edit->setText(text);
    MyOnChange();
}

QString TParaClass::GetParamName() const
{
    return m_lblParaName->text();
}

void TParaClass::SetParamName(const QString &name)
{
    m_lblParaName->setText(name);
}

QWidget *TParaClass::GetEditControl() const
{
    return m_edit;
}

void TParaClass::setRowData(int row)
{
    SetParamName(m_table->fGetParamName(row));
    SetAchse(m_table->fGetAchse(row));
    SetQ7Adresse(m_table->ValueByColName(row, QStringLiteral("USS-Adresse /hex")));
    const QString level = m_table->ValueByColName(row, QStringLiteral("Write-Level")).trimmed();
    m_writeLevel = IsInteger(level) ? level.toInt() : 0;
}

void TParaClass::RebuildParaControl()
{
    if (!m_table) return;
    quint32 address = 0;
    const int row =
        m_table->FindRecord(GetKoordinate(), QString::number(m_table->CurrentAx()), address);
    if (row < 0) {
        SetParamName(QStringLiteral("???"));
        delete m_edit;
        m_edit = nullptr;
        return;
    }
    setRowData(row);
    if (!m_edit) {
        m_edit = new QLineEdit(this);
        m_edit->setObjectName(QStringLiteral("EditFeld"));
        m_edit->setGeometry(3, 18, 120, 20);
        m_edit->show();
    }
    m_previousText = m_table->ValueByColName(row, QStringLiteral("Wert"));
    m_edit->setText(m_previousText);
}

void TParaClass::SucheGleicheParameter()
{
    m_same.clear();
    QWidget *form = window();
    if (!form || (m_table && m_table->TextRestoring())) return;
    for (TParaClass *other : form->findChildren<TParaClass *>()) {
        // Controls not bound yet count: the table binds the form's controls one by one.
        if (other != this && (other->m_table == m_table || !other->m_table) &&
            other->GetKoordinate().trimmed().compare(GetKoordinate().trimmed(),
                                                     Qt::CaseInsensitive) == 0)
            m_same << other;
    }
}

void TParaClass::RefreshVisible()
{
    update();
}

void TParaClass::RefreshValue()
{
    if (m_table) m_table->RefreshParaControl(this, false);
}

void TParaClass::UpdateEinheit() {}

void TParaClass::MyOnChange()
{
    if (OnChange) OnChange(this);
}

void TParaClass::FontChanged()
{
    if (!m_table) return;
    m_lblKoordinate->setFont(m_table->FontKoordinate());
    m_lblParaName->setFont(m_table->FontParaName());
    if (m_edit) m_edit->setFont(m_table->FontEditFeld());
}

} // namespace drivewiz
