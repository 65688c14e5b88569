#ifndef DRIVEWIZ_DESIGNER_DESIGNERSESSION_H
#define DRIVEWIZ_DESIGNER_DESIGNERSESSION_H

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QVariantMap>

#include <QtDesigner/QDesignerFormEditorInterface>
class QDesignerFormWindowInterface;

namespace drivewiz::designer {

/// What the plugin does for Designer as a whole, once it knows Designer's core:
/// - it registers the page control's container extension;
/// - it installs a dialog service for design time: the components' questions to the form
///   author (a coordinate, whether to increment) are asked, their messages are not shown
///   but written to Designer's output with the prefix "drivewiz:";
/// - it watches the forms: the library's components change some of their properties
///   themselves (the name "P_" + coordinate, links between components, design-time
///   defaults). Designer writes only properties it saw change, so every library property
///   that differs from a new widget's is reported to Designer as changed, and the object
///   inspector and property editor are refreshed.
class DesignerSession : public QObject
{
    Q_OBJECT

public:
    explicit DesignerSession(QObject *parent = nullptr);
    ~DesignerSession() override;

    /// Designer's core; null where the plugin is used without Designer (a form builder).
    QDesignerFormEditorInterface *core() const { return m_core; }
    /// Called with Designer's core when the plugin is initialized; the first call counts.
    void attach(QDesignerFormEditorInterface *core);
    /// Runs Loaded() on a new widget once the current event is done (Designer sets the
    /// properties of a drop or a form file right after creating the widgets), all pending
    /// widgets in start-up order: tables, parameter controls, the rest.
    void startLater(QWidget *widget);
    /// Reports to Designer the library properties of a form's widgets that differ from a
    /// new widget's (see above). Returns how many were newly marked.
    int reportChanges(QDesignerFormWindowInterface *form);

    /// The library properties of a new widget of the library class `meta` belongs to, as
    /// created at run time; empty for a class the plugin does not know.
    static QVariantMap defaultValues(const QMetaObject *meta);

private:
    void startPending();
    void watchForm(QDesignerFormWindowInterface *form);
    void refreshLater(QDesignerFormWindowInterface *form);

    QPointer<QDesignerFormEditorInterface> m_core;
    bool m_refreshPending = false;
    QList<QPointer<QWidget>> m_starting;
};

} // namespace drivewiz::designer

#endif // DRIVEWIZ_DESIGNER_DESIGNERSESSION_H
