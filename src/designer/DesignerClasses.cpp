// The classes of the widget box: one line each.

#include "designer/DesignerClasses.h"

#include "designer/DesignerAliases.h"

#include <QFile>

#include <type_traits>

namespace drivewiz::designer {

namespace {

// One class of the table; Plain is its class under the plain name (DesignerAliases.h)
// where forms with plain names exist.
template <class T, class Plain = void>
DesignerClass entry(const char *header, QSize size, Appearance appearance, const char *toolTip)
{
    QWidget *(*plain)(QWidget *) = nullptr;
    if constexpr (!std::is_void_v<Plain>) {
        static_assert(std::is_base_of_v<T, Plain>);
        plain = [](QWidget *parent) -> QWidget * { return new Plain(parent); };
    }
    return {&T::staticMetaObject,
            header,
            size,
            appearance,
            [](QWidget *parent) -> QWidget * { return new T(parent); },
            toolTip,
            plain};
}

constexpr Appearance Visual = Appearance::Visual;
constexpr Appearance NonVisual = Appearance::NonVisual;
constexpr Appearance Container = Appearance::Container;

} // namespace

QString DesignerClass::name() const
{
    return qualifiedName().mid(int(qstrlen("drivewiz::")));
}

QString DesignerClass::qualifiedName() const
{
    return QLatin1String(metaObject->className());
}

QString DesignerClass::iconPath() const
{
    const QString path = QStringLiteral(":/drivewiz/designer/%1.svg").arg(name());
    return QFile::exists(path) ? path : QStringLiteral(":/drivewiz/designer/component.svg");
}

const DesignerClass *designerClassOf(const QMetaObject *meta)
{
    for (; meta; meta = meta->superClass()) {
        for (const DesignerClass &cls : designerClasses()) {
            if (cls.metaObject == meta) return &cls;
        }
    }
    return nullptr;
}

QList<QMetaProperty> libraryProperties(const QMetaObject *meta)
{
    const QMetaObject *base = meta;
    while (base && !QByteArray(base->className()).startsWith("drivewiz::"))
        base = base->superClass(); // past a plain-name class
    while (base && QByteArray(base->className()).startsWith("drivewiz::"))
        base = base->superClass();
    QList<QMetaProperty> list;
    for (int i = base ? base->propertyCount() : meta->propertyCount(); i < meta->propertyCount();
         ++i)
        list << meta->property(i);
    return list;
}

const std::vector<DesignerClass> &designerClasses()
{
    // Sizes: a parameter control as its form draws it; the others as the drive tool's
    // widgets are when placed.
    static const std::vector<DesignerClass> classes = {
        entry<drivewiz::TParaTable, ::TParaTable>(
            "paramtable/ParaTable.h", {96, 40}, NonVisual,
            "Parameter table: the drive's parameter descriptions and values, "
            "once per form"),
        entry<drivewiz::TParaClass, ::TParaClass>(
            "paramctrls/ParamCtrls.h", {177, 39}, Visual,
            "Parameter control: coordinate, name and input field of a parameter"),
        entry<drivewiz::TwizPageControl, ::TwizPageControl>(
            "wizard/wizPageControl.h", {400, 300}, Container,
            "Wizard page control: the pages of a wizard, one after another"),
        entry<drivewiz::TwizTreeView, ::TwizTreeView>(
            "wizard/wizPageControl.h", {160, 300}, Visual,
            "Wizard tree: the outline of a page control's pages"),
        entry<drivewiz::TwizEdit, ::TwizEdit>("widgets/wizEdit.h", {121, 21}, Visual,
                                              "Wizard edit field"),
        entry<drivewiz::TwizComboBox, ::TwizComboBox>("widgets/wizCombo.h", {145, 21}, Visual,
                                                      "Wizard combo box"),
        entry<drivewiz::TwizLabel, ::TwizLabel>("widgets/wizEdit.h", {60, 16}, Visual,
                                                "Wizard label"),
        entry<drivewiz::TwizButton, ::TwizButton>("widgets/wizEdit.h", {75, 25}, Visual,
                                                  "Wizard push button"),
        entry<drivewiz::TMyRadioGroup, ::TMyRadioGroup>(
            "widgets/wizEdit.h", {185, 105}, Visual,
            "Radio group: one choice of a list, in columns"),
    };
    return classes;
}

} // namespace drivewiz::designer
