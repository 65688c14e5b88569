#include "designer_fixture.h"

#include "host/wizFormLoader.h"

#include <QCoreApplication>
#include <QPluginLoader>

namespace drivewiz::test {

QDesignerCustomWidgetCollectionInterface *designerPlugins()
{
    static QPluginLoader loader(QStringLiteral(DRIVEWIZ_DESIGNER_PLUGIN));
    auto *plugins = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
    if (!plugins)
        ADD_FAILURE() << "the plugin does not load: " << loader.errorString().toStdString();
    return plugins;
}

QDesignerCustomWidgetInterface *designerPlugin(const QString &className)
{
    QDesignerCustomWidgetCollectionInterface *plugins = designerPlugins();
    if (!plugins) return nullptr;
    for (QDesignerCustomWidgetInterface *plugin : plugins->customWidgets()) {
        if (plugin->name() == QStringLiteral("drivewiz::") + className) return plugin;
    }
    return nullptr;
}

QStringList loaderClasses()
{
    return TwizFormLoader::libraryClasses();
}

} // namespace drivewiz::test

void DesignForm::SetUp()
{
    form = std::make_unique<QWidget>();
    form->setObjectName(QStringLiteral("Form"));
    form->resize(800, 600);
}

QWidget *DesignForm::designWidget(const QString &className, QWidget *parent)
{
    QDesignerCustomWidgetInterface *plugin = drivewiz::test::designerPlugin(className);
    if (!plugin) {
        ADD_FAILURE() << "no widget box entry for " << className.toStdString();
        return nullptr;
    }
    return plugin->createWidget(parent ? parent : form.get());
}

void DesignForm::startUp()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

QString DesignForm::sampleParameters()
{
    return drivewiz::test::sourcePath(QStringLiteral("data/sample/Parameter.csv"));
}
