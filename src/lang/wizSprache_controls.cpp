// Translation of a form's widgets from the language file: the widget side of wizSprache.

#include "lang/wizSprache.h"

#include "lang/wizSprache_p.h"
#include "platform/component.h"
#include "platform/inifile.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTabWidget>

#include <optional>

namespace drivewiz {

namespace {

bool isDesigning(const QObject *object)
{
    // Plain Qt widgets carry no component state; only the library's own classes do.
    const auto *component = dynamic_cast<const Component *>(object);
    return component && component->isDesigning();
}

// The tab widget whose page `w` is, if any: Qt keeps a page's caption in the tab bar.
QTabWidget *tabWidgetOfPage(QWidget *w)
{
    auto *stack = qobject_cast<QStackedWidget *>(w->parentWidget());
    auto *tabs = stack ? qobject_cast<QTabWidget *>(stack->parentWidget()) : nullptr;
    return tabs && tabs->indexOf(w) >= 0 ? tabs : nullptr;
}

bool isDropDownList(const QWidget *w)
{
    const auto *combo = qobject_cast<const QComboBox *>(w);
    return combo && !combo->isEditable();
}

// What "caption or text" means for this widget's class; nothing when it has none.
std::optional<QString> captionOf(QWidget *w)
{
    if (QTabWidget *tabs = tabWidgetOfPage(w)) return tabs->tabText(tabs->indexOf(w));
    if (auto *label = qobject_cast<QLabel *>(w)) return label->text();
    if (auto *button = qobject_cast<QAbstractButton *>(w)) return button->text();
    if (auto *box = qobject_cast<QGroupBox *>(w)) return box->title();
    if (auto *edit = qobject_cast<QLineEdit *>(w)) return edit->text();
    auto *combo = qobject_cast<QComboBox *>(w);
    if (combo && combo->isEditable()) return combo->currentText();
    return std::nullopt;
}

void setCaption(QWidget *w, const QString &text)
{
    if (QTabWidget *tabs = tabWidgetOfPage(w))
        tabs->setTabText(tabs->indexOf(w), text);
    else if (auto *label = qobject_cast<QLabel *>(w))
        label->setText(text);
    else if (auto *button = qobject_cast<QAbstractButton *>(w))
        button->setText(text);
    else if (auto *box = qobject_cast<QGroupBox *>(w))
        box->setTitle(text);
    else if (auto *edit = qobject_cast<QLineEdit *>(w))
        edit->setText(text);
    else if (auto *combo = qobject_cast<QComboBox *>(w))
        combo->setEditText(text);
}

// Line edits and editable combo boxes show values rather than captions.
bool captionIsValue(QWidget *w)
{
    return !tabWidgetOfPage(w) && (qobject_cast<QLineEdit *>(w) || qobject_cast<QComboBox *>(w));
}

bool isTranslatable(const QWidget *w)
{
    const QString name = w->objectName();
    return !name.isEmpty() && !name.startsWith(QLatin1String("qt_"));
}

// Depth first in child order, like the form designer's control list. Windows parented
// to the container (dialogs, pop-ups) are separate forms and are left alone.
template <typename Visit> void forEachChildWidget(QWidget *container, const Visit &visit)
{
    const QObjectList children = container->children(); // copy: a visit may add children
    for (QObject *child : children) {
        if (!child->isWidgetType()) continue;
        auto *w = static_cast<QWidget *>(child);
        if (w->isWindow()) continue;
        if (isTranslatable(w)) visit(w);
        forEachChildWidget(w, visit);
    }
}

std::optional<QString> lookup(const IniFile &ini, const QString &section, const QString &key)
{
    if (!ini.valueExists(section, key)) return std::nullopt;
    return ini.readString(section, key);
}

QString itemKey(const QString &name, int index)
{
    return name + u'_' + QString::number(index);
}

// Widgets are only touched where the file has a different text: setting an edit's text
// fires its change handlers, which in a parameter control would post the value.
void readControl(const IniFile &ini, const QString &section, QWidget *w)
{
    const QString name = w->objectName();
    const auto hint = lookup(ini, section, u'h' + name);
    if (hint && *hint != w->toolTip()) w->setToolTip(*hint);
    const auto caption = lookup(ini, section, u'c' + name);
    const auto current = caption ? captionOf(w) : std::nullopt;
    if (current && *caption != *current) setCaption(w, *caption);
    if (!isDropDownList(w)) return;
    auto *combo = static_cast<QComboBox *>(w);
    for (int i = 0; i < combo->count(); ++i) {
        const QString item = ini.readString(section, itemKey(name, i));
        if (!item.isEmpty() && item != combo->itemText(i)) combo->setItemText(i, item);
    }
}

void addMissing(IniFile &ini, const QString &section, const QString &key, const QString &text)
{
    if (!text.isEmpty() && !ini.valueExists(section, key)) ini.writeString(section, key, text);
}

void writeControl(IniFile &ini, const QString &section, QWidget *w)
{
    const QString name = w->objectName();
    addMissing(ini, section, u'h' + name, w->toolTip());
    if (!captionIsValue(w)) addMissing(ini, section, u'c' + name, captionOf(w).value_or(QString()));
    if (!isDropDownList(w)) return;
    auto *combo = static_cast<QComboBox *>(w);
    for (int i = 0; i < combo->count(); ++i)
        addMissing(ini, section, itemKey(name, i), combo->itemText(i));
}

bool mayTranslate(const IniFile *ini, const QString &section, const QWidget *container)
{
    return ini && container && !section.trimmed().isEmpty() && !isDesigning(container);
}

} // namespace

void InitLabel(const IniFile *ini, const QString &section, QLabel *label)
{
    if (!ini || !label || isDesigning(label)) return;
    const QString text = wizReadString(ini, section, label->objectName(), label->text());
    if (text != label->text()) label->setText(text);
}

void ReadControls(const IniFile *ini, int /*language*/, const QString &section, QWidget *container)
{
    if (!mayTranslate(ini, section, container)) return;
    forEachChildWidget(container, [&](QWidget *w) { readControl(*ini, section, w); });
}

void WriteControls(IniFile *ini, int /*language*/, const QString &section, QWidget *container)
{
    if (!mayTranslate(ini, section, container) || !detail::languageWritesAllowed(ini)) return;
    forEachChildWidget(container, [&](QWidget *w) { writeControl(*ini, section, w); });
    detail::saveLanguageFile(ini);
}

} // namespace drivewiz
