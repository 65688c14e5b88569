// Nothing cut off, nothing on top of each other: every wizard the demo host offers, in
// German and English, offline and in read-back, on every page, the host's window and
// its measurement window.
// A label, button, check box, radio button, group title, field or list that is narrower
// or lower than its text, that its parents clip, or whose text overlaps another text,
// fails the test. CTest runs it at 96 and at 192 dots per inch (QT_SCALE_FACTOR 1 and 2).

#include "session_fixture.h"

#include "HostWindow.h"
#include "TablesDemo.h"
#include "lang/wizSprache.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace drivewiz;
using namespace drivewiz::wizhost;

namespace {

// One text widget as the test sees it: the rectangle its text covers (window
// coordinates, clipped to what its parents show) and whether that text fits.
struct TextPart
{
    QWidget *widget = nullptr;
    QRect shown;
    QString problem; // empty when the text fits
};

QString pathOf(const QWidget *w)
{
    QStringList names;
    for (const QWidget *p = w; p && !p->isWindow(); p = p->parentWidget()) {
        if (!p->objectName().isEmpty() && !p->objectName().startsWith(QLatin1String("qt_")))
            names.prepend(p->objectName());
    }
    return names.join(QLatin1Char('/')) + QLatin1Char(' ') + w->metaObject()->className();
}

int textWidth(const QWidget *w, const QString &text)
{
    QString plain = text;
    plain.remove(QLatin1Char('&')); // mnemonics are not drawn
    return QFontMetrics(w->font()).horizontalAdvance(plain);
}

QString tooSmall(const QString &text, QSize need, QSize have)
{
    if (need.width() <= have.width() && need.height() <= have.height()) return QString();
    return QStringLiteral("\"%1\" needs %2x%3, has %4x%5")
        .arg(text)
        .arg(need.width())
        .arg(need.height())
        .arg(have.width())
        .arg(have.height());
}

// Where the text of a widget is drawn (widget coordinates) and whether it fits there.
QRect measure(QWidget *w, QString &problem)
{
    const int lineHeight = QFontMetrics(w->font()).height();
    if (auto *label = qobject_cast<QLabel *>(w)) {
        if (label->text().isEmpty() || !label->pixmap().isNull()) return QRect();
        const QSize need = label->wordWrap() ? QSize(0, label->heightForWidth(label->width()))
                                             : label->sizeHint();
        problem = tooSmall(label->text(), need, label->size());
        if (label->wordWrap() || label->textFormat() == Qt::RichText) return label->contentsRect();
        // The text covers only its own size, aligned in the label.
        const QSize text = QFontMetrics(label->font()).size(Qt::TextShowMnemonic, label->text());
        return QStyle::alignedRect(label->layoutDirection(), label->alignment(),
                                   text.boundedTo(label->contentsRect().size()),
                                   label->contentsRect());
    }
    if (auto *button = qobject_cast<QPushButton *>(w)) {
        if (button->text().isEmpty()) return QRect();
        QStyleOptionButton opt;
        opt.initFrom(button);
        opt.text = button->text();
        opt.icon = button->icon();
        opt.iconSize = button->iconSize();
        const QRect contents = button->style()->subElementRect(QStyle::SE_PushButtonContents, &opt, button);
        const int icon = button->icon().isNull() ? 0 : button->iconSize().width() + 4;
        problem = tooSmall(button->text(), QSize(textWidth(button, button->text()) + icon, lineHeight),
                           contents.size());
        return button->rect();
    }
    if (auto *tool = qobject_cast<QToolButton *>(w)) {
        if (tool->text().isEmpty()) return QRect();
        problem = tooSmall(tool->text(), QSize(textWidth(tool, tool->text()) + 2, lineHeight), tool->size());
        return tool->rect();
    }
    if (qobject_cast<QCheckBox *>(w) || qobject_cast<QRadioButton *>(w)) {
        auto *button = static_cast<QAbstractButton *>(w);
        if (button->text().isEmpty()) return QRect();
        problem = tooSmall(button->text(), button->sizeHint(), button->size());
        return button->rect();
    }
    if (auto *box = qobject_cast<QGroupBox *>(w)) {
        if (box->title().isEmpty()) return QRect();
        problem = tooSmall(box->title(), box->minimumSizeHint(), box->size());
        return QRect(0, 0, box->width(), lineHeight);
    }
    if (auto *edit = qobject_cast<QLineEdit *>(w)) {
        if (edit->displayText().isEmpty() || qobject_cast<QComboBox *>(edit->parentWidget()))
            return QRect();
        const int frame = edit->hasFrame() ? 2 * edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth) : 0;
        problem = tooSmall(edit->displayText(),
                           QSize(textWidth(edit, edit->displayText()) + 4 + frame, lineHeight),
                           edit->size());
        return edit->rect();
    }
    if (auto *combo = qobject_cast<QComboBox *>(w)) {
        if (combo->currentText().isEmpty()) return QRect();
        QStyleOptionComboBox opt;
        opt.initFrom(combo);
        opt.editable = combo->isEditable();
        const QRect field = combo->style()->subControlRect(QStyle::CC_ComboBox, &opt,
                                                           QStyle::SC_ComboBoxEditField, combo);
        problem = tooSmall(combo->currentText(),
                           QSize(textWidth(combo, combo->currentText()), lineHeight), field.size());
        return combo->rect();
    }
    return QRect();
}

// The part of `local` (widget coordinates) that its parents show, in window coordinates;
// `cut` says whether a parent other than a scroll area's view clips it.
QRect shownPart(QWidget *w, const QRect &local, bool &cut)
{
    QRect r(w->mapTo(w->window(), local.topLeft()), local.size());
    bool scrolled = false;
    for (QWidget *p = w->parentWidget(); p; p = p->parentWidget()) {
        const QRect parentRect(p->mapTo(p->window(), QPoint(0, 0)), p->size());
        const QRect before = r;
        r &= parentRect;
        auto *area = p->parentWidget() ? qobject_cast<QAbstractScrollArea *>(p->parentWidget()) : nullptr;
        if (area && area->viewport() == p) scrolled = true; // scrolling, not cutting
        if (r != before && !scrolled) cut = true;
        if (p->isWindow()) break;
    }
    return r;
}

QList<TextPart> textParts(QWidget *window)
{
    QList<TextPart> parts;
    for (QWidget *w : window->findChildren<QWidget *>()) {
        if (!w->isVisible() || w->isWindow()) continue;
        TextPart part;
        part.widget = w;
        const QRect local = measure(w, part.problem);
        if (local.isEmpty()) continue;
        bool cut = false;
        part.shown = shownPart(w, local, cut);
        if (part.shown.isEmpty()) continue; // scrolled out of view
        if (cut && part.problem.isEmpty()) part.problem = QStringLiteral("its parent cuts it off");
        parts << part;
    }
    return parts;
}

// Problems of one window as it shows now.
QStringList check(QWidget *window, const QString &where)
{
    QStringList problems;
    const QList<TextPart> parts = textParts(window);
    for (const TextPart &p : parts) {
        if (!p.problem.isEmpty()) problems << where + QStringLiteral(": ") + pathOf(p.widget) + QStringLiteral(" ") + p.problem;
    }
    for (int i = 0; i < parts.size(); ++i) {
        for (int j = i + 1; j < parts.size(); ++j) {
            const TextPart &a = parts.at(i);
            const TextPart &b = parts.at(j);
            if (a.widget->isAncestorOf(b.widget) || b.widget->isAncestorOf(a.widget)) continue;
            if (a.shown.intersects(b.shown))
                problems << where + QStringLiteral(": ") + pathOf(a.widget) + QStringLiteral(" overlaps ") + pathOf(b.widget);
        }
    }
    return problems;
}

class TextFit : public HostSessionTest
{
protected:
    // The wizards the host offers: its catalog, and any further id it opens.
    static QList<Wizard> offered(HostSession &s)
    {
        QList<Wizard> ids;
        for (const WizardInfo &w : wizardCatalog())
            ids << w.id;
        for (int id = 1; id <= 16; ++id) {
            if (ids.contains(Wizard(id))) continue;
            if (s.createWizard(Wizard(id))) ids << Wizard(id);
            s.closeWizard();
        }
        return ids;
    }
    QStringList checkWizard(Wizard which, const QString &label)
    {
        QStringList problems;
        dwz_form *form = session->createWizard(which);
        if (!form) return {label + QStringLiteral(": does not open")};
        auto *dialog = static_cast<QWidget *>(dwz_form_widget(form));
        dwz_form_show(form);
        settle();
        auto *pages = dialog->findChild<QTabWidget *>();
        const int count = pages ? pages->count() : 1;
        for (int i = 0; i < count; ++i) {
            if (pages) pages->setCurrentIndex(i); // hidden pages too: a choice may show them
            settle();
            const QString where = label + QStringLiteral(" page ") +
                                  (pages ? pages->widget(i)->objectName() : QStringLiteral("-"));
            problems << check(dialog, where);
        }
        session->closeWizard();
        return problems;
    }

};

TEST_F(TextFit, EveryWizardInEveryLanguageShowsEveryTextWhole)
{
    const QList<Wizard> wizards = offered(*session);
    ASSERT_GE(wizards.size(), 2);
    QStringList problems;
    for (int language : {1, 2}) {
        session->setLanguage(language);
        for (int mode : {DWZ_OFFLINE, DWZ_READBACK}) {
            session->setOnlineMode(mode);
            for (Wizard w : wizards) {
                const WizardInfo *info = findWizard(w);
                const QString label = QStringLiteral("%1 (language %2, %3, scale %4)")
                                          .arg(info ? info->name : QString::number(int(w)))
                                          .arg(language)
                                          .arg(mode == DWZ_OFFLINE ? "offline" : "read-back")
                                          .arg(qApp->devicePixelRatio());
                problems << checkWizard(w, label);
            }
        }
    }
    EXPECT_TRUE(problems.isEmpty()) << problems.size() << " problems:\n"
                                    << problems.join(QLatin1Char('\n')).toStdString();
}

TEST_F(TextFit, TheHostWindowShowsEveryTextWhole)
{
    HostWindow window(*session);
    window.show();
    QStringList problems;
    for (int language : {1, 2}) {
        session->setLanguage(language);
        settle();
        problems << check(&window, QStringLiteral("host window, language %1").arg(language));
    }
    EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString();
}

TEST_F(TextFit, TheMeasurementWindowShowsEveryTextWhole)
{
    QStringList problems;
    for (int language : {1, 2}) {
        session->setLanguage(language);
        MeasurementWindow window(*session);
        window.show();
        settle();
        problems << check(&window, QStringLiteral("measurement window, language %1").arg(language));
    }
    EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString();
}

} // namespace
