// The widget box entries of the library's classes and the plugin that lists them.

#include "designer/DesignerPlugin.h"

#include "designer/DesignerSession.h"
#include "designer/NonVisualBox.h"
#include "platform/component.h"

#include <QIcon>
#include <QWidget>
#include <QtDesigner/QDesignerFormWindowInterface>

namespace drivewiz::designer {

WidgetPlugin::WidgetPlugin(const DesignerClass &cls, DesignerSession *session, bool alias,
                           QObject *parent)
    : QObject(parent), m_class(cls), m_session(session), m_alias(alias)
{}

QString WidgetPlugin::name() const
{
    return m_alias ? m_class.name() : m_class.qualifiedName();
}

// Designer keeps classes of the group "[invisible]" out of the widget box.
QString WidgetPlugin::group() const
{
    return m_alias ? QStringLiteral("[invisible]") : QStringLiteral("drivewiz");
}

QString WidgetPlugin::toolTip() const
{
    return QString::fromUtf8(m_class.toolTip);
}

QString WidgetPlugin::whatsThis() const
{
    return toolTip();
}

QString WidgetPlugin::includeFile() const
{
    return QStringLiteral("drivewiz/") + QLatin1String(m_class.header);
}

// Designer's widget box takes only icons with pixmaps of fixed sizes, so the drawing is
// rendered at the sizes it shows.
QIcon WidgetPlugin::icon() const
{
    if (m_icon.isNull()) {
        const QIcon drawing(m_class.iconPath());
        for (const int size : {16, 22, 24, 32, 48})
            m_icon.addPixmap(drawing.pixmap(QSize(size, size)));
    }
    return m_icon;
}

bool WidgetPlugin::isContainer() const
{
    return m_class.appearance == Appearance::Container;
}

bool WidgetPlugin::isInitialized() const
{
    return m_initialized;
}

void WidgetPlugin::initialize(QDesignerFormEditorInterface *core)
{
    if (m_initialized) return;
    m_initialized = true;
    if (core) m_session->attach(core);
}

// Inside a form the widget is being designed, and it is being read until Designer has
// set the properties of the drop or the form file: then it starts up (Loaded()). Outside
// a form (Designer's drag picture, the form preview) it is created as at run time, so
// that it asks nothing while it is only looked at.
QWidget *WidgetPlugin::createWidget(QWidget *parent)
{
    const bool designing =
        !m_session->core() || QDesignerFormWindowInterface::findFormWindow(parent) != nullptr;
    const auto create = m_alias ? m_class.createPlain : m_class.create;
    QWidget *widget = nullptr;
    if (designing) {
        DesignScope scope;
        FormLoadScope reading;
        widget = create(parent);
        m_session->startLater(widget);
    } else {
        widget = create(parent);
    }
    if (m_class.appearance == Appearance::NonVisual) NonVisualBox::decorate(widget, icon());
    return widget;
}

// Texts of the library's properties are coordinates, file and object names: never
// translated, one line each.
QString WidgetPlugin::propertySpecifications() const
{
    QString specs;
    for (const QMetaProperty &p : libraryProperties(m_class.metaObject)) {
        if (p.userType() != QMetaType::QString) continue;
        specs += QStringLiteral(
                     "<stringpropertyspecification name=\"%1\" notr=\"true\" type=\"singleline\"/>")
                     .arg(QLatin1String(p.name()));
    }
    return specs;
}

QString WidgetPlugin::domXml() const
{
    QString pages;
    if (isContainer() && !m_alias)
        pages = QStringLiteral("<widget class=\"QWidget\" name=\"TabSheet1\">"
                               "<attribute name=\"title\"><string>TabSheet1</string></attribute>"
                               "</widget>");
    // The Qt class below the library's: what a form's <extends> names.
    const QMetaObject *base = m_class.metaObject;
    while (base && QByteArray(base->className()).startsWith("drivewiz::"))
        base = base->superClass();
    const QString objectName = m_class.name().mid(1); // TParaClass -> ParaClass
    return QStringLiteral("<ui language=\"c++\" displayname=\"%1\">"
                          "<widget class=\"%2\" name=\"%3\">"
                          "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>%4</width>"
                          "<height>%5</height></rect></property>%6</widget>"
                          "<customwidgets><customwidget><class>%2</class><extends>%7</extends>"
                          "<propertyspecifications>%8</propertyspecifications>"
                          "</customwidget></customwidgets></ui>")
        .arg(m_class.name(), name(), objectName)
        .arg(m_class.size.width())
        .arg(m_class.size.height())
        .arg(pages, QLatin1String(base ? base->className() : "QWidget"), propertySpecifications());
}

DesignerPlugins::DesignerPlugins(QObject *parent)
    : QObject(parent), m_session(new DesignerSession(this))
{
    for (const DesignerClass &cls : designerClasses())
        m_widgets << new WidgetPlugin(cls, m_session, false, this);
    for (const DesignerClass &cls : designerClasses()) {
        if (cls.createPlain) m_widgets << new WidgetPlugin(cls, m_session, true, this);
    }
}

DesignerPlugins::~DesignerPlugins() = default;

QList<QDesignerCustomWidgetInterface *> DesignerPlugins::customWidgets() const
{
    return m_widgets;
}

} // namespace drivewiz::designer
