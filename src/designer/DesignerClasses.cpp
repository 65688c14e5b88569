// The classes of the widget box: one line each.

#include "designer/DesignerClasses.h"

#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl.h"

#include <QFile>

namespace drivewiz::designer {

namespace {

template <class T>
DesignerClass entry(const char *header, QSize size, Appearance appearance, const char *toolTip)
{
    return {&T::staticMetaObject, header, size, appearance,
            [](QWidget *parent) -> QWidget * { return new T(parent); }, toolTip};
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

QList<QMetaProperty> libraryProperties(const QMetaObject *meta)
{
    const QMetaObject *base = meta;
    while (base && QByteArray(base->className()).startsWith("drivewiz::"))
        base = base->superClass();
    QList<QMetaProperty> list;
    for (int i = base ? base->propertyCount() : 0; i < meta->propertyCount(); ++i)
        list << meta->property(i);
    return list;
}

const std::vector<DesignerClass> &designerClasses()
{
    // Sizes: a parameter control as its form draws it; the others as the drive tool's
    // widgets are when placed.
    static const std::vector<DesignerClass> classes = {
        entry<TParaTable>("paramtable/ParaTable.h", {96, 40}, NonVisual,
                          "Parameter table: the drive's parameter descriptions and values, "
                          "once per form"),
        entry<TParaClass>("paramctrls/ParamCtrls.h", {177, 39}, Visual,
                          "Parameter control: coordinate, name and input field of a parameter"),
        entry<TwizPageControl>("wizard/wizPageControl.h", {400, 300}, Container,
                               "Wizard page control: the pages of a wizard, one after another"),
        entry<TwizTreeView>("wizard/wizPageControl.h", {160, 300}, Visual,
                            "Wizard tree: the outline of a page control's pages"),
        entry<TwizEdit>("widgets/wizEdit.h", {121, 21}, Visual, "Wizard edit field"),
        entry<TwizComboBox>("widgets/wizCombo.h", {145, 21}, Visual, "Wizard combo box"),
        entry<TwizLabel>("widgets/wizEdit.h", {60, 16}, Visual, "Wizard label"),
        entry<TwizButton>("widgets/wizEdit.h", {75, 25}, Visual, "Wizard push button"),
        entry<TMyRadioGroup>("widgets/wizEdit.h", {185, 105}, Visual,
                             "Radio group: one choice of a list, in columns"),
    };
    return classes;
}

} // namespace drivewiz::designer
