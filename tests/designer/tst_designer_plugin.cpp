// The plugin as Designer sees it: its widget box entries, their widgets and form XML,
// the properties the property editor offers, non-visual components as boxes.

#include "designer_fixture.h"

#include "host/wizFormLoader.h"
#include "paramtable/ParaTable.h"

#include <QFileInfo>
#include <QImage>
#include <QMetaProperty>
#include <QSet>
#include <QXmlStreamReader>

using namespace drivewiz;
using drivewiz::test::designerPlugins;

namespace {

// What a widget box entry's form XML says: the display name, the widget's class and
// size, whether it holds a page, and the properties it marks as untranslated.
struct DomXml
{
    QString error;
    QString displayName;
    QString widgetClass;
    QSize size;
    int pages = 0;
    QStringList untranslated;
};

DomXml parseDomXml(const QString &xml)
{
    DomXml dom;
    QXmlStreamReader r(xml);
    int depth = 0;
    QString text;
    QString element;
    while (!r.atEnd()) {
        r.readNext();
        if (r.isStartElement()) {
            ++depth;
            element = r.name().toString();
            if (element == QLatin1String("ui"))
                dom.displayName = r.attributes().value(QLatin1String("displayname")).toString();
            if (element == QLatin1String("widget") && dom.widgetClass.isEmpty())
                dom.widgetClass = r.attributes().value(QLatin1String("class")).toString();
            else if (element == QLatin1String("widget"))
                ++dom.pages;
            if (element == QLatin1String("stringpropertyspecification") &&
                r.attributes().value(QLatin1String("notr")) == QLatin1String("true"))
                dom.untranslated << r.attributes().value(QLatin1String("name")).toString();
        } else if (r.isCharacters()) {
            text = r.text().toString();
            if (element == QLatin1String("width")) dom.size.setWidth(text.toInt());
            if (element == QLatin1String("height")) dom.size.setHeight(text.toInt());
        } else if (r.isEndElement()) {
            --depth;
        }
    }
    if (r.hasError()) dom.error = r.errorString();
    return dom;
}

QList<QMetaProperty> ownProperties(const QMetaObject *meta)
{
    const QMetaObject *base = meta;
    while (base && QByteArray(base->className()).startsWith("drivewiz::"))
        base = base->superClass();
    QList<QMetaProperty> list;
    for (int i = base->propertyCount(); i < meta->propertyCount(); ++i)
        list << meta->property(i);
    return list;
}

// The widget box entries, or the plain names for older forms (kept out of the box).
QList<QDesignerCustomWidgetInterface *> plugins(bool entries)
{
    QList<QDesignerCustomWidgetInterface *> list;
    if (!designerPlugins()) return list;
    for (QDesignerCustomWidgetInterface *plugin : designerPlugins()->customWidgets()) {
        if ((plugin->group() == QLatin1String("[invisible]")) != entries) list << plugin;
    }
    return list;
}

} // namespace

TEST(DesignerPlugin, ListsEveryClassOfTheFormLoaderInItsOwnGroup)
{
    ASSERT_NE(designerPlugins(), nullptr);
    QStringList listed;
    for (QDesignerCustomWidgetInterface *plugin : plugins(true)) {
        SCOPED_TRACE(plugin->name().toStdString());
        ASSERT_TRUE(plugin->name().startsWith(QLatin1String("drivewiz::")));
        listed << plugin->name().mid(10);
        EXPECT_EQ(plugin->group(), QLatin1String("drivewiz"));
        EXPECT_FALSE(plugin->toolTip().isEmpty());
        // Designer shows only icons that have pixmaps of fixed sizes.
        const QList<QSize> sizes = plugin->icon().availableSizes();
        EXPECT_TRUE(!sizes.isEmpty() && !sizes.first().isEmpty());
        // The header a host includes as <drivewiz/...>, installed from src/.
        ASSERT_TRUE(plugin->includeFile().startsWith(QLatin1String("drivewiz/")));
        EXPECT_TRUE(QFileInfo::exists(
            drivewiz::test::sourcePath(QStringLiteral("src/") + plugin->includeFile().mid(9))))
            << plugin->includeFile().toStdString();
    }
    QStringList loader = drivewiz::test::loaderClasses();
    listed.sort();
    loader.sort();
    EXPECT_EQ(listed, loader);
    EXPECT_EQ(listed.size(), QSet<QString>(listed.begin(), listed.end()).size());
}

// Forms written with plain class names open with the real widgets: Designer wants a
// widget of exactly the named class, derived here from the library's.
TEST(DesignerPlugin, PlainNamesMakeWidgetsOfThatNameDerivedFromTheLibrarys)
{
    ASSERT_NE(designerPlugins(), nullptr);
    const QList<QDesignerCustomWidgetInterface *> plain = plugins(false);
    EXPECT_EQ(plain.size(), drivewiz::test::loaderClasses().size());
    for (QDesignerCustomWidgetInterface *plugin : plain) {
        SCOPED_TRACE(plugin->name().toStdString());
        EXPECT_TRUE(drivewiz::test::loaderClasses().contains(plugin->name()));
        const std::unique_ptr<QWidget> w(plugin->createWidget(nullptr));
        EXPECT_EQ(QString::fromLatin1(w->metaObject()->className()), plugin->name());
        EXPECT_TRUE(w->inherits(("drivewiz::" + plugin->name()).toLatin1().constData()));
        EXPECT_EQ(plugin->isContainer(), plugin->name() == QLatin1String("TwizPageControl"));
        EXPECT_EQ(parseDomXml(plugin->domXml()).widgetClass, plugin->name());
    }
}

TEST(DesignerPlugin, EachEntryMakesItsClassAndDescribesItInFormXml)
{
    ASSERT_NE(designerPlugins(), nullptr);
    QWidget form;
    for (QDesignerCustomWidgetInterface *plugin : plugins(true)) {
        SCOPED_TRACE(plugin->name().toStdString());
        QWidget *w = plugin->createWidget(&form);
        ASSERT_NE(w, nullptr);
        EXPECT_EQ(QString::fromLatin1(w->metaObject()->className()), plugin->name());
        EXPECT_EQ(w->parentWidget(), &form);
        const DomXml dom = parseDomXml(plugin->domXml());
        ASSERT_TRUE(dom.error.isEmpty()) << dom.error.toStdString();
        EXPECT_EQ(dom.displayName, plugin->name().mid(10));
        EXPECT_EQ(dom.widgetClass, plugin->name());
        EXPECT_GT(dom.size.width(), 0);
        EXPECT_GT(dom.size.height(), 0);
        EXPECT_EQ(dom.pages, plugin->isContainer() ? 1 : 0);
        // Exactly the text properties of the library are marked untranslated.
        QStringList texts;
        for (const QMetaProperty &p : ownProperties(w->metaObject())) {
            if (p.userType() == QMetaType::QString) texts << QLatin1String(p.name());
        }
        EXPECT_EQ(dom.untranslated, texts);
    }
}

// Designer offers an enumeration as a drop-down when the property's enumerator is known,
// and writes it as scope::key; the form loader must read that back.
TEST(DesignerPlugin, EnumerationPropertiesAreDropDownsThatReadBack)
{
    ASSERT_NE(designerPlugins(), nullptr);
    int enums = 0;
    for (QDesignerCustomWidgetInterface *plugin : plugins(true)) {
        const std::unique_ptr<QWidget> w(plugin->createWidget(nullptr));
        for (const QMetaProperty &p : ownProperties(w->metaObject())) {
            if (!p.isEnumType()) continue;
            SCOPED_TRACE(
                (plugin->name() + QLatin1Char('.') + QLatin1String(p.name())).toStdString());
            ++enums;
            const QMetaEnum e = p.enumerator();
            ASSERT_TRUE(e.isValid());
            EXPECT_GE(e.keyCount(), 2);
            const int last = e.value(e.keyCount() - 1);
            const QByteArray written = QByteArray(e.scope()) + "::" + e.valueToKey(last);
            bool ok = false;
            EXPECT_EQ(e.keyToValue(written.constData(), &ok), last);
            EXPECT_TRUE(ok);
        }
    }
    EXPECT_GE(enums, 4); // Online, wizControlType, wizControlAlign, wizEnabled, ...
}

TEST_F(DesignForm, NonVisualComponentIsALabelledBoxOnlyInTheDesigner)
{
    auto *table = design<TParaTable>(QStringLiteral("TParaTable"));
    ASSERT_NE(table, nullptr);
    table->setGeometry(10, 10, 96, 40);
    form->show();
    startUp();
    EXPECT_TRUE(table->isVisible());
    const QImage box = table->grab().toImage();
    QSet<QRgb> colours;
    for (int x = 0; x < box.width(); ++x)
        colours.insert(box.pixel(x, box.height() / 2));
    EXPECT_GT(colours.size(), 2) << "the box shows its icon and name";

    TwizFormLoader loader;
    auto *runtime = qobject_cast<TParaTable *>(
        loader.createWidget(QStringLiteral("TParaTable"), form.get(), QStringLiteral("T2")));
    ASSERT_NE(runtime, nullptr);
    EXPECT_FALSE(runtime->isVisible());
}
