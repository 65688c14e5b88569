#include "ioframes/QuellListe_p.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "util/Divers.h"
#include "widgets/wizCombo.h"
#include "wizard/wizPageControl.h"

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

// Follows a source control's input field through its rebuilds: fills the new field's
// list. The field is checked first thing when the user leaves it (the control's
// BeforeExit), so that the control then writes the corrected text, once.
class SourceFieldWatcher : public QObject
{
public:
    SourceFieldWatcher(TParaClass *control, QObject *context, std::function<void()> refill,
                       std::function<void(TParaClass *)> leave)
        : QObject(context), m_control(control), m_controlObject(control),
          m_refill(std::move(refill))
    {
        control->installEventFilter(this);
        control->BeforeExit = [previous = control->BeforeExit,
                               leave = std::move(leave)](QObject *sender) {
            if (previous) previous(sender);
            if (auto *c = qobject_cast<TParaClass *>(sender)) leave(c);
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
        }
        m_refill();
    }

    QPointer<TParaClass> m_control;
    QObject *m_controlObject;
    QPointer<QWidget> m_field;
    std::function<void()> m_refill;
    bool m_pending = false;
};

} // namespace

QStringList ListWords(const QString &liste)
{
    static const QRegularExpression separators(QStringLiteral("[,;\\s]+"));
    return liste.split(separators, Qt::SkipEmptyParts);
}

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
    const QStringList words = ListWords(liste);
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

QPixmap FramePicture(const QString &resource)
{
    QSvgRenderer renderer(resource);
    if (!renderer.isValid()) return QPixmap();
    QImage image(renderer.defaultSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    return QPixmap::fromImage(image);
}

void SetPicture(QLabel *label, const QString &resource)
{
    if (!label) return;
    const QPixmap picture = FramePicture(resource);
    label->setPixmap(picture);
    label->setMinimumSize(picture.size());
}

TParaTable *FindTable(QWidget *w, const QString &name)
{
    QWidget *form = w ? w->window() : nullptr;
    return form && !name.isEmpty() ? form->findChild<TParaTable *>(name) : nullptr;
}

bool Running(const Component &component)
{
    return (component.componentState() & (csDesigning | csLoading | csDestroying)) ==
           ComponentState();
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
    if (!m_table && !m_name.isEmpty()) m_table = FindTable(frame, m_name);
}

bool FrameTable::languageChanged() const
{
    return m_table && (m_table->LanguageFile() != m_file || m_table->Language() != m_language);
}

void FrameTable::translated()
{
    m_file = m_table ? m_table->LanguageFile() : nullptr;
    m_language = m_table ? m_table->Language() : 0;
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

void WatchSourceField(TParaClass *control, QObject *context, std::function<void()> refill,
                      std::function<void(TParaClass *)> leave)
{
    if (control) new SourceFieldWatcher(control, context, std::move(refill), std::move(leave));
}

QString SourceKoordinate(const QString &text)
{
    return firstWord(text);
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
