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

// One line per class: name, header, size when dropped, appearance, tool tip.
#define DRIVEWIZ_CLASS(Name, header, width, height, appearance, tip)                               \
    entry<drivewiz::Name, ::Name>(header, {width, height}, appearance, tip)

const std::vector<DesignerClass> &designerClasses()
{
    // Sizes as the frames' forms draw them (a new bit bar is 30 by 30 pixels); the
    // other widgets as the drive tool's widgets are when placed.
    // clang-format off
    static const std::vector<DesignerClass> classes = {
        DRIVEWIZ_CLASS(TParaTable, "paramtable/ParaTable.h", 96, 40, NonVisual, "Parameter table: descriptions and values, once per form"),
        DRIVEWIZ_CLASS(TParaClass, "paramctrls/ParamCtrls.h", 177, 39, Visual, "Parameter control: coordinate, name and input field"),
        DRIVEWIZ_CLASS(TwizPageControl, "wizard/wizPageControl.h", 400, 300, Container, "Wizard page control: the pages of a wizard"),
        DRIVEWIZ_CLASS(TwizTreeView, "wizard/wizPageControl.h", 160, 300, Visual, "Wizard tree: the outline of the pages"),
        DRIVEWIZ_CLASS(TwizEdit, "widgets/wizEdit.h", 121, 21, Visual, "Wizard edit field"),
        DRIVEWIZ_CLASS(TwizComboBox, "widgets/wizCombo.h", 145, 21, Visual, "Wizard combo box"),
        DRIVEWIZ_CLASS(TwizLabel, "widgets/wizEdit.h", 60, 16, Visual, "Wizard label"),
        DRIVEWIZ_CLASS(TwizButton, "widgets/wizEdit.h", 75, 25, Visual, "Wizard push button"),
        DRIVEWIZ_CLASS(TMyRadioGroup, "widgets/wizEdit.h", 185, 105, Visual, "Radio group: one choice of a list"),
        DRIVEWIZ_CLASS(TBitLeiste, "ioframes/BitLeiste.h", 30, 30, Visual, "Bit bar: the bits of a parameter control's value"),
        DRIVEWIZ_CLASS(TInput, "ioframes/BE.h", 438, 28, Visual, "Signal input: the source of a drive function"),
        DRIVEWIZ_CLASS(TBEinput, "ioframes/BE.h", 438, 28, Visual, "Binary input: source, status lamp and terminal"),
        DRIVEWIZ_CLASS(TAEinput, "ioframes/BE.h", 438, 28, Visual, "Analog input source"),
        DRIVEWIZ_CLASS(TAnalogEin, "ioframes/AE.h", 540, 190, Visual, "Analog input frame: level, offset and factor"),
        DRIVEWIZ_CLASS(TSystemBEsFrame, "ioframes/SystemBEs.h", 438, 210, Visual, "The drive's fixed-function binary inputs"),
        DRIVEWIZ_CLASS(TAllInputViewer, "ioframes/AllInputViewer.h", 300, 200, Visual, "Which inputs the functions use"),
        DRIVEWIZ_CLASS(TQuellSelektorIntro, "ioframes/QuellSelectIntro.h", 520, 40, Visual, "Introduction of a source-selection page"),
        DRIVEWIZ_CLASS(TAnalogAus, "ioframes/AnalogAusgang.h", 560, 340, Visual, "Analog output: source and 0 to 10 V scaling"),
        DRIVEWIZ_CLASS(TDigitalAus, "ioframes/DigitalAusgang.h", 760, 560, Visual, "Binary outputs and their sources"),
        DRIVEWIZ_CLASS(TEncoderFrame, "ioframes/HEncoder.h", 640, 300, Visual, "Encoder connections of the drive"),
        DRIVEWIZ_CLASS(TArrayGroup, "tables/ArrayGroups.h", 96, 40, NonVisual, "Array group: array parameters edited together"),
        DRIVEWIZ_CLASS(TArrayPara, "paramctrls/ArrayPara.h", 177, 39, Visual, "Array parameter: one element of an array group"),
        DRIVEWIZ_CLASS(THistoryCombo, "widgets/HList.h", 145, 21, Visual, "Combo box with a history of texts"),
        DRIVEWIZ_CLASS(TImportOM_CSV, "tables/ImportOM_CSV.h", 96, 40, NonVisual, "Measurement import from CSV files"),
        DRIVEWIZ_CLASS(TMeasurementPlot, "tables/MeasurementPlot.h", 400, 250, Visual, "Plot of an imported measurement"),
    };
    // clang-format on
    return classes;
}

} // namespace drivewiz::designer
