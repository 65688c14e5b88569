#ifndef DRIVEWIZ_DESIGNER_DESIGNERCLASSES_H
#define DRIVEWIZ_DESIGNER_DESIGNERCLASSES_H

#include <QList>
#include <QMetaObject>
#include <QMetaProperty>
#include <QSize>
#include <QString>

#include <vector>

class QWidget;

namespace drivewiz::designer {

/// How a class shows in Designer.
enum class Appearance {
    Visual,    ///< a widget as it looks at run time
    NonVisual, ///< never shown at run time: a small labelled box while designing
    Container, ///< holds pages that Designer adds and removes (container extension)
};

/// One class of the widget box. The table in DesignerClasses.cpp lists them all, one line
/// each; everything else (widget box entry, icon, form XML) is derived from it.
struct DesignerClass
{
    const QMetaObject *metaObject;
    const char *header; ///< below include/drivewiz/
    QSize size;         ///< default size when dropped
    Appearance appearance;
    QWidget *(*create)(QWidget *parent);
    const char *toolTip;
    /// The class under its plain name for forms written without the namespace
    /// (DesignerAliases.h); null when there is none.
    QWidget *(*createPlain)(QWidget *parent);

    /// The class name without "drivewiz::" ("TParaClass").
    QString name() const;
    /// "drivewiz::TParaClass": the name Designer writes into .ui files.
    QString qualifiedName() const;
    /// The widget box icon (":/drivewiz/designer/<name>.svg"; a generic one when missing).
    QString iconPath() const;
};

/// Every class the plugin offers, in widget box order.
const std::vector<DesignerClass> &designerClasses();

/// The library class a meta-object belongs to (itself, or the one a plain-name class
/// derives from); null for other classes.
const DesignerClass *designerClassOf(const QMetaObject *meta);

/// The properties the library's own classes declare (not those of the Qt classes below).
QList<QMetaProperty> libraryProperties(const QMetaObject *meta);

} // namespace drivewiz::designer

#endif // DRIVEWIZ_DESIGNER_DESIGNERCLASSES_H
