// The overview of the binary and analog inputs in use.

#include "ioframes/AllInputViewer.h"

#include "ioframes/BE.h"
#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "util/Divers.h"

#include <QPair>
#include <QSet>
#include <QTextCursor>
#include <QTextDocument>

namespace drivewiz {

namespace {

const char *const kKeys[] = {"s1", "s2", "s3", "s4"};
const char *const kDefaults[] = {"Verwendete Binäreingänge:", "Es wird kein BE-Eingang verwendet.",
                                 "Verwendete Analogeingänge:", "Es wird kein AE-Eingang verwendet."};

// The input a source names: "BE7" gives 7 for prefix "BE"; 0 when the word is none.
int inputNumber(const QString &word, const QLatin1String &prefix)
{
    if (word.size() < 3 || !word.startsWith(prefix) || !word.at(2).isDigit()) return 0;
    int n = 0;
    for (qsizetype i = 2; i < word.size() && word.at(i).isDigit() && n < 1000; ++i)
        n = n * 10 + word.at(i).digitValue();
    return n;
}

// A function's name as the overview lists it: a name that does not end in a digit loses
// its last word ("Schnellhalt Quelle" lists as "Schnellhalt").
QString listedName(const QString &name)
{
    const QString n = name.trimmed();
    if (n.isEmpty() || n.back().isDigit()) return n;
    const qsizetype blank = n.lastIndexOf(QLatin1Char(' '));
    return blank < 0 ? n : n.left(blank).trimmed();
}

} // namespace

TAllInputViewer::TAllInputViewer(QWidget *parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setLineWrapMode(QTextEdit::WidgetWidth);
    document()->setDefaultFont(QFont(QStringLiteral("Arial")));
    for (const char *text : kDefaults)
        m_texts << QString::fromUtf8(text);
}

TAllInputViewer::~TAllInputViewer() = default;

TParaTable *TAllInputViewer::wizParaSource() const
{
    return m_table;
}

void TAllInputViewer::SetwizParaSource(TParaTable *table)
{
    m_table = table;
    if (table) m_tableName = table->objectName();
}

QString TAllInputViewer::wizParaSourceName() const
{
    return m_table ? m_table->objectName() : m_tableName;
}

void TAllInputViewer::SetwizParaSourceName(const QString &objectName)
{
    m_tableName = objectName;
    if (!isLoading()) SetwizParaSource(ioframes::tableByName(this, objectName));
}

// Each input frame's own parameter controls (its source, and the hidden display of a
// binary input) are looked at; the index of the source must agree with the input its
// text names: (index - 3) div 2 + 1 for a binary input, the index itself for an analog
// one ("1: AE1").
void TAllInputViewer::collect()
{
    m_binary.clear();
    m_analog.clear();
    QWidget *form = GetMainForm(this);
    if (!form) return;
    QSet<QString> listed;
    for (TInput *input : form->findChildren<TInput *>()) {
        if (input->Kind() == ikNone || input->SuppressInInutViewer()) continue;
        for (QObject *child : input->children()) {
            auto *c = qobject_cast<TParaClass *>(child);
            if (!c || !c->GetEditControl()) continue;
            const QString text = c->GetText();
            static const TCharSet delims(" :");
            const QString word = LExtractWord(2, text, delims, ewMultipleDelim).trimmed();
            const int index = c->GetAuswahl();
            const int be = index >= 3 ? inputNumber(word, QLatin1String("BE")) : 0;
            const int ae = index >= 1 ? inputNumber(word, QLatin1String("AE")) : 0;
            QMap<int, QString> *uses = nullptr;
            int n = 0;
            if (be > 0 && (index - 3) / 2 + 1 == be) {
                uses = &m_binary;
                n = be;
            } else if (ae > 0 && index == ae) {
                uses = &m_analog;
                n = ae;
            }
            const QString key = QString::number(uses == &m_analog) + QString::number(n) +
                                c->GetKoordinate();
            if (!uses || listed.contains(key)) continue;
            listed.insert(key);
            QString &list = (*uses)[n];
            if (!list.isEmpty()) list += QLatin1Char(' ');
            list += listedName(c->GetParamName()) + QStringLiteral(" (") + c->GetKoordinate() +
                    (text.toUpper().contains(QLatin1String("INVERS")) ? QStringLiteral(", invers")
                                                                     : QString()) +
                    QStringLiteral(");");
        }
    }
}

// The text goes in at once and the headings are made bold afterwards: a view lays out
// its text after every insertion.
void TAllInputViewer::write()
{
    QString text;
    QList<QPair<int, int>> headings;
    const auto block = [&](const QString &title, const QString &none, const QString &kind,
                           const QMap<int, QString> &uses) {
        headings.append({int(text.size()), int(title.size())});
        text += title;
        if (uses.isEmpty()) text += QLatin1Char('\n') + none;
        for (auto it = uses.cbegin(); it != uses.cend(); ++it)
            text += QLatin1Char('\n') + kind + QString::number(it.key()) + QStringLiteral(": \t") +
                    it.value();
    };
    block(m_texts.at(0), m_texts.at(1), QStringLiteral("BE "), m_binary);
    text += QStringLiteral("\n\n");
    block(m_texts.at(2), m_texts.at(3), QStringLiteral("AE "), m_analog);
    document()->setPlainText(text);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    for (const auto &[from, length] : std::as_const(headings)) {
        QTextCursor cursor(document());
        cursor.setPosition(from);
        cursor.setPosition(from + length, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(bold);
    }
}

void TAllInputViewer::MyUpdate()
{
    collect();
    write();
}

void TAllInputViewer::MyOnShow()
{
    if (ioframes::atRunTime(*this)) MyUpdate();
}

void TAllInputViewer::showEvent(QShowEvent *event)
{
    QTextEdit::showEvent(event);
    MyOnShow();
}

void TAllInputViewer::UpdateLanguage()
{
    if (!m_table || isDesigning()) return;
    for (int i = 0; i < 4; ++i)
        m_texts[i] = wizReadString(m_table->LanguageFile(), QStringLiteral("TAllInputViewer"),
                                   QLatin1String(kKeys[i]), QString::fromUtf8(kDefaults[i]));
}

void TAllInputViewer::Loaded()
{
    Component::Loaded();
    if (!m_table) SetwizParaSource(ioframes::tableByName(this, m_tableName));
    if (!m_table && window()) m_table = window()->findChild<TParaTable *>();
    if (isDesigning()) return;
    UpdateLanguage();
    if (isVisible()) MyUpdate();
}

} // namespace drivewiz
