#ifndef DRIVEWIZ_TESTS_DESIGNER_FIXTURE_H
#define DRIVEWIZ_TESTS_DESIGNER_FIXTURE_H

// The Designer plugin loaded as Designer loads it, and a form on which its widgets are
// made as Designer makes them: inside the form, then started up once events run.

#include "support/testing.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <memory>

namespace drivewiz::test {

/// The plugin's collection, loaded once per process through QPluginLoader; the test fails
/// (and this is null) when it does not load.
QDesignerCustomWidgetCollectionInterface *designerPlugins();
/// The widget box entry of a class ("TParaClass"), or null.
QDesignerCustomWidgetInterface *designerPlugin(const QString &className);
/// The class names of the library's form loader, without namespace.
QStringList loaderClasses();

} // namespace drivewiz::test

class DesignForm : public testing::Test
{
protected:
    void SetUp() override;

    /// A widget of the class made by the plugin on `parent` (the form by default); it
    /// starts up when startUp() runs, as in Designer after a drop.
    template <class T> T *design(const QString &className, QWidget *parent = nullptr)
    {
        return qobject_cast<T *>(designWidget(className, parent));
    }
    QWidget *designWidget(const QString &className, QWidget *parent = nullptr);
    /// Lets the widgets made so far start up.
    static void startUp();
    /// The sample drive's description file.
    static QString sampleParameters();

    std::unique_ptr<QWidget> form;
};

#endif // DRIVEWIZ_TESTS_DESIGNER_FIXTURE_H
