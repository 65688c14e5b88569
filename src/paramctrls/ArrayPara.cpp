#include "paramctrls/ArrayPara.h"

#include "paramtable/coordinates.h"
#include "platform/dialogs.h"

namespace drivewiz {

TArrayPara::TArrayPara(QWidget *parent) : TParaClass(parent) {}

TArrayPara::~TArrayPara() = default;

QString TArrayPara::RecordName(int element) const
{
    return m_array + QLatin1Char('.') + QString::number(element);
}

void TArrayPara::SetKoordinate(const QString &koordinate)
{
    const QString trimmed = koordinate.trimmed();
    // "J10.3" and "J10" both name the array J10, "2.J10.3" the array 2.J10; a text that is
    // no coordinate (empty, or the designer's placeholder) is kept as it is.
    const bool axisPrefix = trimmed.size() > 2 && trimmed.at(0).isDigit() && trimmed.at(1) == QLatin1Char('.');
    m_array = !IsKoordinate(trimmed) ? koordinate
              : axisPrefix           ? trimmed.section(QLatin1Char('.'), 0, 1)
                                     : trimmed.section(QLatin1Char('.'), 0, 0);
    TParaClass::SetKoordinate(IsKoordinate(trimmed) ? RecordName(m_element) : koordinate);
}

void TArrayPara::SetwizArrayGroup(QObject *group)
{
    m_group = group;
    if (group) m_groupName = group->objectName();
}

QString TArrayPara::wizArrayGroupName() const
{
    return m_group ? m_group->objectName() : m_groupName;
}

void TArrayPara::SetwizArrayGroupName(const QString &objectName)
{
    m_groupName = objectName;
    QWidget *form = window();
    m_group = form && !objectName.isEmpty() ? form->findChild<QObject *>(objectName) : nullptr;
}

int TArrayPara::elementRow(int element) const
{
    TParaTable *table = wizParaSource();
    return table && element >= 0 ? table->GetRecNo(RecordName(element), false) : -1;
}

bool TArrayPara::GetArrayElement(int element)
{
    if (!wizParaSource() || !IsKoordinate(m_array)) return false;
    if (elementRow(element) < 0) {
        ShowMessage(QStringLiteral("WizardError in TArrayPara.GetArrayElement\r") +
                    QStringLiteral("Control name: ") + objectName() + QLatin1Char('\r') +
                    QStringLiteral("Kooridnate: ") + m_array +
                    QStringLiteral("Array-Element unknown (") + QString::number(element) +
                    QLatin1Char(')'));
        return false;
    }
    m_element = element;
    if (GetKoordinate() != RecordName(element))
        TParaClass::SetKoordinate(RecordName(element));
    else
        RebuildParaControl(); // the same element: show its record's value afresh
    return true;
}

bool TArrayPara::SetArrayElement(int element)
{
    TParaTable *table = wizParaSource();
    if (!table || !IsKoordinate(m_array)) return false;
    const int row = elementRow(element);
    if (row < 0) {
        ShowMessage(QStringLiteral("TArrayPara.SetArrayElement: ") + RecordName(element) +
                    QStringLiteral(" unbekannt!"));
        return false;
    }
    if (GetEditControl()) table->SetCell(row, QStringLiteral("Wert"), GetText());
    return true;
}

void TArrayPara::Loaded()
{
    if (!m_group && !m_groupName.isEmpty()) SetwizArrayGroupName(m_groupName);
    if (m_group) {
        bool ok = false;
        const int index = m_group->property("ArrayIndex").toInt(&ok);
        if (ok && index >= 0 && index != m_element && IsKoordinate(m_array)) {
            m_element = index;
            TParaClass::SetKoordinate(RecordName(index));
        }
    }
    TParaClass::Loaded();
}

} // namespace drivewiz
