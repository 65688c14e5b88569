#ifndef DRIVEWIZ_DESIGNER_DESIGNERPLUGIN_H
#define DRIVEWIZ_DESIGNER_DESIGNERPLUGIN_H

#include "designer/DesignerClasses.h"

#include <QIcon>
#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace drivewiz::designer {

class DesignerSession;

/// One class in Designer's widget box. Widgets it creates inside a form are being
/// designed (their component state says so from the constructor on), start up with
/// Loaded() once Designer has set the properties of the drop or the file, and report
/// the properties they change themselves (automatic names, links) to Designer.
class WidgetPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    /// An alias has the class name without namespace and no widget box entry: it lets
    /// Designer open forms written with plain class names ("TParaClass"); they are saved
    /// with the full name.
    WidgetPlugin(const DesignerClass &cls, DesignerSession *session, bool alias, QObject *parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget *createWidget(QWidget *parent) override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface *core) override;
    QString domXml() const override;

    const DesignerClass &designerClass() const { return m_class; }
    bool isAlias() const { return m_alias; }

private:
    QString propertySpecifications() const;

    const DesignerClass &m_class;
    DesignerSession *m_session;
    mutable QIcon m_icon;
    bool m_alias;
    bool m_initialized = false;
};

/// The plugin: every class of designerClasses() in the group "drivewiz", each also under
/// its plain name for older forms.
class DesignerPlugins : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit DesignerPlugins(QObject *parent = nullptr);
    ~DesignerPlugins() override;

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    DesignerSession *m_session;
    QList<QDesignerCustomWidgetInterface *> m_widgets;
};

} // namespace drivewiz::designer

#endif // DRIVEWIZ_DESIGNER_DESIGNERPLUGIN_H
