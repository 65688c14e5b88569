#include "ioframes/QuellListe_p.h"

#include "ioframes/ioframes_p.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "util/Divers.h"
#include "widgets/wizCombo.h"
#include "wizard/wizPageControl.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QSvgRenderer>

#include <vector>

namespace drivewiz::ioframes {

namespace {

double limitOf(const QString &text, double fallback)
{
    double v = 0;
    const QString t = TrimFloat(text.trimmed());
    return !t.isEmpty() && TryStrToFloat(t, v) ? v : fallback;
}

bool passes(TParaTable *table, int p, const SourceFilter &filter)
{
    const QStringList c = table->Cells(p, {"Datentyp", "Art", "Read-Level", "UGW", "OGW"});
    const QString type = c[0].trimmed().toUpper();
    if (!filter.typeWords.contains(type)) return false;
    const int kind = StrToIntDef(c[1].trimmed(), 0);
    if (kind != 0 && !(kind == 1 && filter.selections)) return false;
    if (StrToIntDef(c[2].trimmed(), 0) > table->UserLevel()) return false;
    if (filter.zeroOne && type != QLatin1String("B"))
        return limitOf(c[3], -1) >= 0 && limitOf(c[4], 2) <= 1;
    return true;
}

// One word of a parameter list: a coordinate pattern and an optional axis.
struct ListWord
{
    QRegularExpression pattern;
    QString axis; // empty: any axis
};

std::vector<ListWord> compile(const QStringList &words)
{
    std::vector<ListWord> out;
    for (const QString &w : words) {
        ListWord lw;
        QString koord = w;
        if (w.size() > 2 && w.at(1) == QLatin1Char('.') && w.at(0).isDigit()) {
            lw.axis = w.left(1);
            koord = w.mid(2);
        }
        lw.pattern = QRegularExpression(QRegularExpression::wildcardToRegularExpression(koord),
                                        QRegularExpression::CaseInsensitiveOption);
        out.push_back(lw);
    }
    return out;
}

int matchingWord(const std::vector<ListWord> &words, const QString &koord, const QString &axis)
{
    for (size_t i = 0; i < words.size(); ++i) {
        const ListWord &w = words[i];
        if ((w.axis.isEmpty() || w.axis == axis) && w.pattern.match(koord).hasMatch())
            return int(i);
    }
    return -1;
}

QString firstWord(const QString &text)
{
    return LExtractWord(1, text, TCharSet(" :"), ewMultipleDelim).trimmed();
}

// Follows a source control's input field through its rebuilds: fills each new field's
// list, and remembers the source the field had when the user entered it. Leaving the
// field puts a typed parameter in the form of its entry first thing (the control's
// BeforeExit), so that the control then writes the corrected text, once.
class SourceFieldWatcher : public QObject
{
public:
    SourceFieldWatcher(TParaClass *control, QObject *context, std::function<void()> refill)
        : QObject(context), m_control(control), m_controlObject(control),
          m_refill(std::move(refill))
    {
        control->installEventFilter(this);
        control->BeforeExit = [previous = control->BeforeExit,
                               self = QPointer<SourceFieldWatcher>(this)](QObject *sender) {
            if (previous) previous(sender);
            if (self && self->m_control) PrepareSourceText(self->m_control, self->m_entered);
        };
        attach();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // Compared as plain objects: a control being destroyed is no TParaClass any more.
        if (event->type() == QEvent::ChildAdded && watched == m_controlObject && !m_pending) {
            // The new child is still being made: its list is filled once it stands.
            m_pending = true;
            QMetaObject::invokeMethod(this, &SourceFieldWatcher::attach, Qt::QueuedConnection);
        } else if (event->type() == QEvent::FocusIn && watched == m_field && m_control &&
                   static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason) {
            m_entered = m_control->GetText();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void attach()
    {
        m_pending = false;
        if (!m_control) return;
        QWidget *field = m_control->GetEditControl();
        if (field && field != m_field) {
            m_field = field;
            field->installEventFilter(this);
            m_entered.clear();
        }
        m_refill();
        if (field && field->hasFocus() && m_entered.isEmpty()) m_entered = m_control->GetText();
    }

    QPointer<TParaClass> m_control;
    QObject *m_controlObject;
    QPointer<QWidget> m_field;
    std::function<void()> m_refill;
    QString m_entered; // the source when the user entered the field
    bool m_pending = false;
};

// Puts a frame's fields into their order for Tab again whenever a parameter control of the
// frame has built a new field.
class TabOrderKeeper : public QObject
{
public:
    TabOrderKeeper(QWidget *frame, QObject *context, std::function<QList<QWidget *>()> order)
        : QObject(context), m_order(std::move(order))
    {
        for (TParaClass *c : frame->findChildren<TParaClass *>())
            c->installEventFilter(this);
        schedule();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded) schedule();
        return QObject::eventFilter(watched, event);
    }

private:
    void schedule()
    {
        if (m_pending) return;
        m_pending = true;
        QMetaObject::invokeMethod(this, &TabOrderKeeper::apply, Qt::QueuedConnection);
    }

    void apply()
    {
        m_pending = false;
        QWidget *previous = nullptr;
        for (QWidget *w : m_order()) {
            if (!w) continue;
            if (previous) QWidget::setTabOrder(previous, w);
            previous = w;
        }
    }

    std::function<QList<QWidget *>()> m_order;
    bool m_pending = false;
};

} // namespace

namespace {

QStringList listWords(const QString &liste)
{
    static const QRegularExpression separators(QStringLiteral("[,;\\s]+"));
    return liste.split(separators, Qt::SkipEmptyParts);
}

} // namespace

QString SourceEntry(TParaTable *table, int p)
{
    const QString axis = table->fGetAchse(p).trimmed();
    QString entry = table->fGetKoord(p).trimmed() + QStringLiteral(": ") +
                    table->Cell(p, QStringLiteral("Name")).trimmed();
    if (!axis.isEmpty() && axis != QLatin1String("0") &&
        axis != QString::number(table->CurrentAx()))
        entry.prepend(axis + QLatin1Char('.'));
    return entry;
}

QStringList SourceEntries(TParaTable *table, const QString &liste, const SourceFilter &filter,
                          const QStringList &always)
{
    if (!table) return {};
    const QStringList words = listWords(liste);
    const std::vector<ListWord> compiled = compile(words);
    std::vector<QStringList> buckets(std::max<size_t>(compiled.size(), 1));
    for (int p = 0; p < table->RowCount(); ++p) {
        const int word =
            compiled.empty() ? 0 : matchingWord(compiled, table->fGetKoord(p), table->fGetAchse(p));
        if (word >= 0 && passes(table, p, filter)) buckets[size_t(word)] << SourceEntry(table, p);
    }
    QStringList entries;
    for (const QStringList &bucket : buckets)
        entries << bucket;
    entries.removeDuplicates(); // a table that fetched a description twice
    // The parameters offered always, on every axis the table has them, as they stand.
    for (const QString &koord : always) {
        for (int p = 0; p < table->RowCount(); ++p) {
            if (table->fGetKoord(p).compare(koord, Qt::CaseInsensitive) != 0) continue;
            const QString entry = SourceEntry(table, p);
            if (!entries.contains(entry)) entries << entry;
        }
    }
    return entries;
}

void FillSourceCombo(TParaClass *control, const QStringList &entries)
{
    auto *combo = control ? qobject_cast<TwizComboBox *>(control->GetEditControl()) : nullptr;
    if (!combo) return;
    const QString current = combo->currentText();
    int index = -1;
    const QString key = firstWord(current);
    for (int i = 0; i < entries.size() && index < 0 && !key.isEmpty(); ++i) {
        if (firstWord(entries.at(i)).compare(key, Qt::CaseInsensitive) == 0) index = i;
    }
    {
        const QSignalBlocker blocker(combo);
        combo->clear();
        combo->addItems(entries);
        combo->setCurrentIndex(-1);
        combo->setEditText(current);
    }
    // The matching entry is chosen as if the user had chosen it, so the frame and the
    // control see the change.
    if (index >= 0) combo->setCurrentIndex(index);
}

int SourceRecord(TParaTable *table, const QString &text)
{
    const QString koord = firstWord(text);
    if (!table || koord.isEmpty()) return -1;
    quint32 address = 0;
    return table->FindRecord(koord, QString::number(table->CurrentAx()), address);
}

bool DriveValue(TParaTable *table, const QString &koordinate, QString &value)
{
    value.clear();
    if (!table) return false;
    const int row = table->GetRecNo(koordinate, true);
    if (row < 0) return false;
    value = table->Cell(row, QStringLiteral("Wert")).toUpper().trimmed();
    return true;
}

namespace {

QPixmap framePicture(const QString &resource)
{
    QSvgRenderer renderer(resource);
    if (!renderer.isValid()) return QPixmap();
    // Drawn for the screen's device pixels, so that the picture stays sharp at any scale.
    const qreal ratio = qApp ? qApp->devicePixelRatio() : 1.0;
    QImage image(renderer.defaultSize() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    QPixmap picture = QPixmap::fromImage(image);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

} // namespace

void SetPicture(QLabel *label, const QString &resource)
{
    if (!label) return;
    const QPixmap picture = framePicture(resource);
    label->setPixmap(picture);
    label->setMinimumSize(picture.deviceIndependentSize().toSize());
}

void FrameTable::set(TParaTable *table)
{
    m_table = table;
    if (table) m_name = table->objectName();
}

QString FrameTable::name() const
{
    return m_table ? m_table->objectName() : m_name;
}

bool FrameTable::rename(const QString &objectName)
{
    if (m_name == objectName && (m_table || objectName.isEmpty())) return false;
    m_name = objectName;
    return true;
}

void FrameTable::resolve(QWidget *frame)
{
    if (!m_table && !m_name.isEmpty()) m_table = tableByName(frame, m_name);
}

void HideWizardPage(QWidget *w)
{
    for (QWidget *page = w; page; page = page->parentWidget()) {
        QWidget *stack = page->parentWidget();
        auto *pages = stack ? qobject_cast<TwizPageControl *>(stack->parentWidget()) : nullptr;
        if (pages && pages->indexOf(page) >= 0) {
            page->setProperty("Tag", 1);
            pages->UpdateTreeView(true);
            return;
        }
    }
}

void WatchSourceField(TParaClass *control, QObject *context, std::function<void()> refill)
{
    if (control) new SourceFieldWatcher(control, context, std::move(refill));
}

namespace {

// Shows a text in a combo box without posting it: its entry when the list has one.
void showInCombo(QComboBox *combo, const QString &text)
{
    const QString key = firstWord(text);
    for (int i = 0; i < combo->count(); ++i) {
        if (!key.isEmpty() &&
            firstWord(combo->itemText(i)).compare(key, Qt::CaseInsensitive) == 0) {
            combo->setCurrentIndex(i);
            return;
        }
    }
    combo->setEditText(text);
}

} // namespace

void PrepareSourceText(TParaClass *control, const QString &before)
{
    TParaTable *table = control ? control->wizParaSource() : nullptr;
    auto *combo = control ? qobject_cast<QComboBox *>(control->GetEditControl()) : nullptr;
    if (!table || !combo || !combo->isEditable() || table->Online() == omRueckdoku) return;
    const QString text = combo->currentText().trimmed();
    const int row = text.isEmpty() ? -1 : SourceRecord(table, text);
    if (row < 0) {
        // Nothing typed, or no parameter of this drive: the value it had comes back.
        if (!text.isEmpty())
            ShowMessage(QString(s_ParamInvalid).replace(QStringLiteral("%s"), firstWord(text)));
        showInCombo(combo, before.isEmpty() ? control->PreviousText() : before);
        return;
    }
    // A parameter outside the list is taken as typed: it joins the list.
    const QString entry = SourceEntry(table, row);
    if (combo->findText(entry) < 0) combo->addItem(entry);
    showInCombo(combo, entry);
}

void KeepTabOrder(QWidget *frame, QObject *context, std::function<QList<QWidget *>()> order)
{
    if (frame) new TabOrderKeeper(frame, context, std::move(order));
}

void CheckSource(TParaClass *control)
{
    TParaTable *table = control ? control->wizParaSource() : nullptr;
    if (!table || !control->GetEditControl() || table->Online() == omRueckdoku) return;
    const QString text = control->GetText().trimmed();
    const int row = text.isEmpty() ? -1 : SourceRecord(table, text);
    if (row < 0) {
        if (!text.isEmpty())
            ShowMessage(QString(s_ParamInvalid).replace(QStringLiteral("%s"), firstWord(text)));
        if (control->GetText() != control->PreviousText())
            control->SetText(control->PreviousText());
        return;
    }
    const QString entry = SourceEntry(table, row);
    if (control->GetText() != entry) control->SetText(entry);
}

QStringList SourceListCache::entries(TParaTable *table, const QString &liste,
                                     const SourceFilter &filter, const QStringList &always)
{
    if (!table) return {};
    const QString key = QStringLiteral("%1|%2|%3|%4|%5|%6")
                            .arg(quintptr(table))
                            .arg(table->UserLevel())
                            .arg(table->CurrentAx())
                            .arg(table->RowCount())
                            .arg(filter.typeWords.join(QLatin1Char(',')), liste);
    if (key != m_key) {
        m_entries = SourceEntries(table, liste, filter, always);
        m_key = key;
    }
    return m_entries;
}

} // namespace drivewiz::ioframes
