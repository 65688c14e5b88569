// The parameter control: construction, published properties and the value model.

#include "paramctrls/ParamCtrls.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls_p.h"
#include "paramtable/coordinates.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "ui_ParamCtrls.h"
#include "util/Divers.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <cmath>

namespace drivewiz {

TParaClass::TParaClass(QWidget *parent) : QFrame(parent), m_ui(std::make_unique<Ui::TParaClass>())
{
    m_ui->setupUi(this);
    m_lblKoordinate = m_ui->LblKoordinate;
    m_lblParaName = m_ui->LblParaName;
    // The labels are 11 pixels high in "Microsoft Sans Serif" (or what the system has in
    // its place) as the drive tool draws them; Designer files only know point sizes.
    static const QFont nameFont = [] {
        QFont f(QStringLiteral("Microsoft Sans Serif"));
        f.setPixelSize(11);
        return f;
    }();
    static const QFont koordinateFont = [] {
        QFont f = nameFont;
        f.setBold(true);
        return f;
    }();
    m_lblKoordinate->setFont(koordinateFont);
    m_lblParaName->setFont(nameFont);
    for (QLabel *label : {m_lblKoordinate, m_lblParaName}) {
        label->installEventFilter(this);
        label->setToolTip(s_ClickForParDesc);
    }
}

TParaClass::~TParaClass()
{
    addComponentState(csDestroying);
    leaveSameParameterLists();
    paractl::Registry::instance().remove(this, m_q7adr, GetKoordinate());
}

// --- published properties ----------------------------------------------------------------

void TParaClass::SetwizShowElementNameOnly(bool on)
{
    if (m_showElementNameOnly == on) return;
    m_showElementNameOnly = on;
    RebuildParaControl();
}

QString TParaClass::GetKoordinate() const
{
    return m_lblKoordinate->text();
}

// Binding a table to a control that already has its coordinate builds it as setting the
// coordinate would, so the order of the two calls does not matter.
void TParaClass::SetwizParaSource(TParaTable *table)
{
    if (table) m_tableName = table->objectName();
    if (m_table == table) return;
    if (m_table && !m_table->TextRestoring()) leaveSameParameterLists();
    m_table = table;
    if (table && !isLoading() && IsKoordinate(GetKoordinate())) buildForCoordinate();
}

QString TParaClass::wizParaSourceName() const
{
    return m_table ? m_table->objectName() : m_tableName;
}

void TParaClass::SetwizParaSourceName(const QString &objectName)
{
    if (m_tableName == objectName && (m_table || objectName.isEmpty())) return;
    m_tableName = objectName;
    QWidget *form = window();
    TParaTable *table =
        form && !objectName.isEmpty() ? form->findChild<TParaTable *>(objectName) : nullptr;
    if (table) {
        SetwizParaSource(table);
    } else {
        m_table = nullptr;
        if (!isLoading()) RebuildParaControl();
    }
}

void TParaClass::SetwizControlType(TwizCtrlType type)
{
    if (m_controlType == type) return;
    m_controlType = type;
    RebuildParaControl();
}

void TParaClass::SetwizControlAlign(TwizControlAlign align)
{
    if (m_controlAlign == align) return;
    m_controlAlign = align;
    SetEditCtrlPosition();
}

void TParaClass::SetwizControlLeft(int left)
{
    if (m_controlLeft == left) return;
    m_controlLeft = left;
    SetEditCtrlPosition();
}

void TParaClass::SetwizControlWidth(int width)
{
    if (m_controlWidth == width) return;
    m_controlWidth = width;
    SetEditCtrlPosition();
}

void TParaClass::SetwizControlHeight(int height)
{
    if (m_controlHeight == height) return;
    m_controlHeight = height;
    SetEditCtrlPosition();
}

void TParaClass::SetwizVisible(bool visible)
{
    m_wizVisible = visible;
    setVisible(visible);
    fireVisibleChange();
}

void TParaClass::fireVisibleChange()
{
    if (OnVisibleChange) OnVisibleChange(this);
    Q_EMIT visibleChanged(!isHidden());
}

void TParaClass::SetwizToolInvisible(TwizToolInvisible mode)
{
    m_toolInvisible = mode;
}

void TParaClass::SetInputFeldHint(const QString &hint)
{
    m_inputFeldHint = hint;
    if (m_input && !hint.isEmpty()) m_input->setToolTip(hint);
}

void TParaClass::SetQ7Adresse(const QString &hex)
{
    registerAddress(quint32(HexToInt(hex)));
}

void TParaClass::registerAddress(quint32 address)
{
    paractl::Registry::instance().setAddress(this, m_q7adr, address);
    m_q7adr = address;
}

void TParaClass::SetAchse(const QString &axis)
{
    m_achse = IsInteger(axis) ? axis : QStringLiteral("0");
}

QString TParaClass::GetParamName() const
{
    return m_lblParaName->text();
}

void TParaClass::SetParamName(const QString &name)
{
    m_lblParaName->setText(name);
    if (!m_building) SetEditCtrlPosition();
}

QFont TParaClass::GetCtrlFont() const
{
    if (qobject_cast<QLineEdit *>(m_input) || qobject_cast<QComboBox *>(m_input))
        return m_input->font();
    return m_table ? m_table->FontEditFeld() : font();
}

void TParaClass::AddNotifyWindow(quintptr handle)
{
    if (handle && !m_notify.contains(handle)) m_notify << handle;
}

void TParaClass::RemoveNotifyWindow(quintptr handle)
{
    m_notify.removeAll(handle);
}

// --- the value model -----------------------------------------------------------------------

double TParaClass::GetASFloat() const
{
    const QString text = GetText();
    if (text.isEmpty()) return 0;
    return StrToFloat(TrimFloat(text));
}

void TParaClass::SetASFloat(double value)
{
    SetText(FloatToStrF(value, FloatFormat::Fixed, 18, m_decimals));
}

namespace {

// 1-based position of the first "bin"/"hex" is the third-last: the word ends in it.
bool endsWithMarker(const QString &lower, const QString &marker)
{
    return lower.size() >= 3 && lower.indexOf(marker) == lower.size() - 3;
}

} // namespace

int TParaClass::GetASInteger() const
{
    const QString text = GetText();
    if (text.trimmed().isEmpty()) return 0;
    const QString w = LExtractWord(1, text, TCharSet(":"), ewMultipleDelim);
    try {
        if (IsInteger(w)) return StrToInt(w.trimmed());
        const QString l = w.toLower();
        const int n = int(w.size());
        if (endsWithMarker(l, QStringLiteral("bin"))) return BinToDec(w);
        if (endsWithMarker(l, QStringLiteral("hex")))
            return HexToInt(w.left(n - 3)); // the "e" of the marker is no digit of the number
        if (n >= 2 && (w.at(n - 1) == QLatin1Char('h') || w.at(n - 1) == QLatin1Char('H')) &&
            w.at(n - 2).isDigit() && w.at(n - 2).unicode() < 0x80)
            return HexToInt(w);
        if (IsFloat(w)) return int(Round(GetASFloat()));
        return 0;
    } catch (const ConvertError &e) {
        ShowMessage(QStringLiteral("Error: ") + e.message() + QStringLiteral(" Value=\"") + text +
                    QStringLiteral("\""));
        throw;
    }
}

void TParaClass::SetASInteger(int value)
{
    if (m_kind == 4) {
        const int width = int(Round(std::log2(m_ogw + 1)));
        SetText(DecToBin(quint32(value), std::max(width, 0)));
    } else {
        SetText(IntToStr(value));
    }
}

int TParaClass::GetASNative() const
{
    if (!m_table) return 0;
    const int record = const_cast<TParaClass *>(this)->recordRow();
    if (record < 0) return 0;
    const double scale = GetValueAt16384LSB(m_table, record);
    if (scale == 0) {
        // The drive tool fails here with a division error; we say so and give 0.
        ShowMessage(GetKoordinate() + QStringLiteral(": ") + s_SkalingError);
        return 0;
    }
    return int(Round(GetASFloat() / scale * 16384));
}

void TParaClass::SetAsNative(int value)
{
    if (!m_table) return;
    const int record = recordRow();
    if (record >= 0) SetASFloat(GetValueAt16384LSB(m_table, record) * (value / 16384.0));
}

int TParaClass::recordRow()
{
    return m_table ? m_table->GetRecNo(GetKoordinate(), false) : -1;
}

int TParaClass::GetAuswahl() const
{
    const QString w = LExtractWord(1, GetText(), TCharSet(":"), ewMultipleDelim).trimmed();
    return IsInteger(w) ? StrToInt(w) : NoSelection;
}

namespace {

int indexOfKey(const QComboBox *combo, int key)
{
    for (int i = 0; i < combo->count(); ++i) {
        const QString w = LExtractWord(1, combo->itemText(i), TCharSet(":"), ewSingleDelim);
        if (IsInteger(w) && StrToInt(w.trimmed()) == key) return i;
    }
    return -1;
}

} // namespace

// A selection list not filled yet (it fills when it opens) is filled first, as SetText
// does, so that a key the parameter offers is always found.
void TParaClass::SetAuswahl(int key)
{
    auto *combo = qobject_cast<TwizComboBox *>(m_input);
    if (!combo) return;
    int index = indexOfKey(combo, key);
    if (index < 0 && combo->count() < 2) {
        fillSelectionList();
        index = indexOfKey(combo, key);
    }
    if (index >= 0) combo->setCurrentIndex(index);
    if (mayPostFromProgram()) PostValue();
}

int TParaClass::GetAuswahlCount() const
{
    const auto *combo = qobject_cast<TwizComboBox *>(m_input);
    return combo ? combo->count() : 0;
}

bool TParaClass::Bit(int n) const
{
    return (quint32(GetASInteger()) & (1u << (n & 31))) != 0;
}

void TParaClass::SetBit(int n, bool on)
{
    const quint32 mask = 1u << (n & 31);
    const quint32 v = quint32(GetASInteger());
    SetASInteger(int(on ? v | mask : v & ~mask));
}

bool TParaClass::IsDefault() const
{
    return ElimBlanksLowerCase(GetText()) == ElimBlanksLowerCase(m_default);
}

void TParaClass::SetOGW(double value)
{
    if (!m_input) return;
    m_ogw = value;
    m_input->setToolTip(GetWertebereichString(TrimFloat(FloatToStr(m_ugw)), m_default,
                                              TrimFloat(FloatToStr(m_ogw)), GetEinheit()));
}

QString TParaClass::GetWertebereich(int record) const
{
    if (!m_table) return QString();
    QString unit = m_unit ? m_unit->text() : QString();
    if (unit.isEmpty()) unit = m_table->Cell(record, QStringLiteral("Einheit"));
    const auto col = [this, record](const char *title) {
        return TrimFloat(m_table->Cell(record, QString::fromLatin1(title)));
    };
    return GetWertebereichString(col("UGW"), col("Defaultwert"), col("OGW"), unit);
}

QString TParaClass::GetWertebereichString(const QString &ugw, const QString &defaultValue,
                                          const QString &ogw, const QString &unit) const
{
    const QString u = unit.trimmed();
    if (m_numeric)
        return s_ValRange + QStringLiteral(": ") + ugw + QLatin1Char(' ') + u +
               QStringLiteral(".. ") + defaultValue + QStringLiteral(" ..") + ogw +
               QLatin1Char(' ') + u;
    if (m_dataType.size() > 3 &&
        m_dataType.left(3).compare(QLatin1String("str"), Qt::CaseInsensitive) == 0)
        return m_dataType.mid(3) + QLatin1Char(' ') + s_StringLen;
    return QString();
}

QString TParaClass::GetEinheit() const
{
    return m_unit ? m_unit->text() : QString();
}

bool TParaClass::IsIndirekteEinheit(const QString &unit)
{
    return unit.size() >= 3 && unit.startsWith(QLatin1Char('<')) && unit.endsWith(QLatin1Char('>'));
}

QString TParaClass::GetLblDimCaption(int record, bool &resolved)
{
    resolved = false;
    if (!m_table) return QString();
    const QString u = m_table->Cell(record, QStringLiteral("Einheit")).trimmed();
    if (!IsIndirekteEinheit(u)) return u;
    const QString c = u.mid(1, u.size() - 2);
    quint32 address = 0;
    const int found = m_table->FindRecord(c, QString::number(m_table->CurrentAx()), address);
    resolved = address != 0;
    if (found < 0) return c;
    m_table->AddIndirectUnitSource(c);
    return m_table->Cell(found, QStringLiteral("Wert"));
}

void TParaClass::UpdateEinheitString(int record)
{
    bool resolved = false;
    if (m_unit) m_unit->setText(GetLblDimCaption(record, resolved));
}

void TParaClass::UpdateEinheit()
{
    if (!m_unit || m_indirectUnit.isEmpty() || !m_table) return;
    const int record = m_table->GetRecNo(GetKoordinate(), true);
    if (record >= 0) UpdateEinheitString(record);
}

// --- free functions -------------------------------------------------------------------------

namespace {

QString freshValue(TParaTable *table, const QString &koordinate, int axis)
{
    QString value;
    quint8 status = 0;
    table->GetFreshParaValue(GetQ7Addresse(koordinate, axis), koordinate, value, status);
    return value;
}

} // namespace

double GetValueAt16384LSB(TParaTable *table, int record)
{
    if (!table) return 0;
    QString s = table->Cell(record, QStringLiteral("Skalierung BUS"));
    const QString function = table->Cell(record, QStringLiteral("Skalierungsfunktion"));
    const int axis = table->CurrentAx();
    if (function == QLatin1String("3")) {
        s = QStringLiteral("4096 = ") + TrimFloat(freshValue(table, QStringLiteral("R04"), 0));
    } else if (function == QLatin1String("7")) {
        int p = 0;
        TryStrToInt(freshValue(table, QStringLiteral("B20"), axis).trimmed(), p);
        const double n = StrToFloat(TrimFloat(freshValue(table, QStringLiteral("B13"), axis)));
        const double power =
            StrToFloat(TrimFloat(freshValue(table, QStringLiteral("B11"), axis))) * 1000;
        const long double torque = power / (2 * 3.14159265358979323846L * n / 60);
        s = p < 64 ? QStringLiteral("4096 = ") + FloatToStr(double(torque))
                   : QStringLiteral("4096 = ") +
                         TrimFloat(freshValue(table, QStringLiteral("B17"), axis));
    }
    QString a = LExtractWord(1, s, TCharSet("="), ewMultipleDelim);
    QString b = LExtractWord(2, s, TCharSet("="), ewMultipleDelim);
    b = ElimChars(b, TCharSet(".,"));
    a = TrimFloat(a.trimmed());
    b = TrimFloat(b);
    if (a.isEmpty() || b.isEmpty()) return 0;
    return 16384 / StrToFloat(a) * StrToFloat(b);
}

QString GetOptionUnten(TParaTable *table, const QString &current)
{
    if (!table) return current;
    quint32 address = 0;
    const int record =
        table->FindRecord(QStringLiteral("E58"), QString::number(table->CurrentAx()), address);
    return record >= 0 ? table->Cell(record, QStringLiteral("Wert")).toUpper().trimmed()
                       : QStringLiteral("???");
}

TParaClass *FindMyParam(QWidget *container, const QString &koordinate)
{
    if (!container) return nullptr;
    const QString wanted = koordinate.toUpper();
    for (QObject *child : container->children()) {
        auto *w = qobject_cast<QWidget *>(child);
        if (!w) continue;
        if (auto *p = qobject_cast<TParaClass *>(w)) {
            if (p->GetKoordinate().toUpper() == wanted) return p;
        } else if (TParaClass *found = FindMyParam(w, koordinate)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace drivewiz
