// A wizard form drawn with Designer's own form editor (in this process, with the plugin
// found on the plugin path as Designer finds it), saved, and loaded at run time by the
// library's form loader: every property of the library's classes arrives as drawn.

#include "support/testing.h"

#include "host/wizFormLoader.h"
#include "ioframes/BE.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "wizard/wizPageControl.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QMetaProperty>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerContainerExtension>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerWidgetFactoryInterface>
#include <QtDesigner/QExtensionManager>

#include <memory>

using namespace drivewiz;

namespace {

QString formXml()
{
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Wizard</class>
 <widget class="QDialog" name="Wizard">
  <property name="geometry"><rect><x>0</x><y>0</y><width>700</width><height>420</height></rect></property>
  <widget class="drivewiz::TParaTable" name="ParaTable">
   <property name="geometry"><rect><x>600</x><y>380</y><width>96</width><height>40</height></rect></property>
   <property name="FileNameParams"><string notr="true">%1</string></property>
  </widget>
  <widget class="drivewiz::TwizTreeView" name="Outline">
   <property name="geometry"><rect><x>5</x><y>5</y><width>150</width><height>300</height></rect></property>
  </widget>
  <widget class="drivewiz::TwizPageControl" name="Pages">
   <property name="geometry"><rect><x>160</x><y>5</y><width>500</width><height>360</height></rect></property>
   <property name="wizTreeView"><string notr="true">Outline</string></property>
   <widget class="QWidget" name="PageBus">
    <attribute name="title"><string>Feldbus</string></attribute>
    <widget class="drivewiz::TParaClass" name="Speed">
     <property name="geometry"><rect><x>10</x><y>40</y><width>300</width><height>40</height></rect></property>
     <property name="wizKoordinate"><string notr="true">I10</string></property>
     <property name="wizParaSource"><string notr="true">ParaTable</string></property>
    </widget>
   </widget>
  </widget>
 </widget>
</ui>
)")
        .arg(drivewiz::test::sourcePath(QStringLiteral("data/sample/Parameter.csv")));
}

// Designer's form editor, made once per process as the designer program makes it.
QDesignerFormEditorInterface *designerCore()
{
    static QDesignerFormEditorInterface *core = [] {
        QCoreApplication::addLibraryPath(QStringLiteral(DRIVEWIZ_PLUGIN_DIR));
        QDesignerComponents::initializeResources();
        QDesignerFormEditorInterface *c = QDesignerComponents::createFormEditor(nullptr);
        c->setTopLevel(new QWidget);
        c->setWidgetBox(QDesignerComponents::createWidgetBox(c, nullptr));
        c->setPropertyEditor(QDesignerComponents::createPropertyEditor(c, nullptr));
        c->setObjectInspector(QDesignerComponents::createObjectInspector(c, nullptr));
        c->setActionEditor(QDesignerComponents::createActionEditor(c, nullptr));
        new QDesignerIntegration(c, c);
        QDesignerComponents::initializePlugins(c);
        return c;
    }();
    return core;
}

// Every property the library's classes declare, by object name and property, of the
// widgets drawn in the form (not those the components make inside themselves).
QMap<QString, QVariant> libraryProperties(QWidget *root, const QStringList &drawn)
{
    QMap<QString, QVariant> values;
    for (QWidget *w : root->findChildren<QWidget *>()) {
        const QMetaObject *meta = w->metaObject();
        if (!QByteArray(meta->className()).startsWith("drivewiz::") ||
            !drawn.contains(w->objectName()))
            continue;
        const QMetaObject *base = meta;
        while (QByteArray(base->className()).startsWith("drivewiz::"))
            base = base->superClass();
        for (int i = base->propertyCount(); i < meta->propertyCount(); ++i) {
            const QMetaProperty p = meta->property(i);
            values.insert(w->objectName() + QLatin1Char('.') + QLatin1String(p.name()), p.read(w));
        }
    }
    return values;
}

void runEvents()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

class DesignerForm : public testing::Test
{
protected:
    void SetUp() override { open(formXml()); }

    void open(const QString &xmlText)
    {
        core = designerCore();
        if (form) TearDown();
        form = core->formWindowManager()->createFormWindow(nullptr);
        core->formWindowManager()->setActiveFormWindow(form);
        QString error;
        QByteArray xml = xmlText.toUtf8();
        QBuffer buffer(&xml);
        buffer.open(QIODevice::ReadOnly);
        ASSERT_TRUE(form->setContents(&buffer, &error)) << error.toStdString();
        runEvents();
    }
    void TearDown() override
    {
        core->formWindowManager()->removeFormWindow(form);
        delete form;
        form = nullptr;
    }

    template <class T> T *find(const QString &name) const
    {
        return form->mainContainer()->findChild<T *>(name);
    }
    // A widget dropped from the widget box onto a container of the form.
    QWidget *drop(const QString &className, QWidget *container)
    {
        QWidget *w = core->widgetFactory()->createWidget(className, container);
        if (!w) return nullptr;
        // Named as Designer names a drop: after the class, without its "T".
        w->setObjectName(className.section(QStringLiteral("::"), -1).mid(1));
        form->manageWidget(w);
        return w;
    }
    // The form as Designer saves it, loaded at run time.
    std::unique_ptr<QWidget> saveAndLoad(QString *saved = nullptr)
    {
        const QString xml = form->contents();
        if (saved) *saved = xml;
        QByteArray bytes = xml.toUtf8();
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        TwizFormLoader loader;
        FormLoadScope loading;
        return std::unique_ptr<QWidget>(loader.load(&buffer));
    }

    // Compares the library properties of every widget drawn in the form with those of
    // the loaded form; returns the drawn ones.
    QMap<QString, QVariant> expectLoadedAsDrawn(QWidget *loaded) const
    {
        QStringList managed;
        for (QWidget *w : form->mainContainer()->findChildren<QWidget *>()) {
            if (form->isManaged(w)) managed << w->objectName();
        }
        const QMap<QString, QVariant> drawn = libraryProperties(form->mainContainer(), managed);
        const QMap<QString, QVariant> read = libraryProperties(loaded, managed);
        EXPECT_EQ(drawn.keys(), read.keys());
        for (auto it = drawn.cbegin(); it != drawn.cend(); ++it)
            EXPECT_EQ(read.value(it.key()), it.value()) << it.key().toStdString();
        return drawn;
    }

    QDesignerFormEditorInterface *core = nullptr;
    QDesignerFormWindowInterface *form = nullptr;
};

} // namespace

TEST_F(DesignerForm, OpeningAFormRenamesNothingAndShowsTheParameters)
{
    auto *speed = find<TParaClass>(QStringLiteral("Speed"));
    ASSERT_NE(speed, nullptr);
    EXPECT_TRUE(speed->isDesigning());
    EXPECT_NE(speed->GetEditControl(), nullptr);
    auto *pages = find<TwizPageControl>(QStringLiteral("Pages"));
    ASSERT_NE(pages, nullptr);
    EXPECT_EQ(pages->wizTreeView(), find<TwizTreeView>(QStringLiteral("Outline")));
    EXPECT_TRUE(drivewiz::test::recorder().entries().empty());
}

TEST_F(DesignerForm, DrawnFormLoadsBackWithIdenticalProperties)
{
    QWidget *page = find<QWidget>(QStringLiteral("PageBus"));
    ASSERT_NE(page, nullptr);
    auto *dropped = qobject_cast<TParaClass *>(drop(QStringLiteral("drivewiz::TParaClass"), page));
    ASSERT_NE(dropped, nullptr);
    form->cursor()->setWidgetProperty(dropped, QStringLiteral("wizKoordinate"),
                                      QStringLiteral("A80"));
    runEvents();
    EXPECT_EQ(dropped->objectName(), QLatin1String("P_A80"));
    auto *speed = find<TParaClass>(QStringLiteral("Speed"));
    form->cursor()->setWidgetProperty(speed, QStringLiteral("wizControlType"),
                                      QVariant::fromValue(wctComboDropDown));
    form->cursor()->setWidgetProperty(speed, QStringLiteral("wizControlAlign"),
                                      QVariant::fromValue(caRight));
    form->cursor()->setWidgetProperty(speed, QStringLiteral("wizControlLeft"), 150);
    auto *table = find<TParaTable>(QStringLiteral("ParaTable"));
    form->cursor()->setWidgetProperty(table, QStringLiteral("Online"),
                                      QVariant::fromValue(omRueckdoku));
    form->cursor()->setWidgetProperty(table, QStringLiteral("wizIdString"),
                                      QStringLiteral("Feldbus"));
    runEvents();

    QString saved;
    const std::unique_ptr<QWidget> loaded = saveAndLoad(&saved);
    ASSERT_NE(loaded, nullptr) << saved.toStdString();
    EXPECT_TRUE(saved.contains(QLatin1String("<header>drivewiz/paramctrls/ParamCtrls.h</header>")));
    const QMap<QString, QVariant> drawn = expectLoadedAsDrawn(loaded.get());
    EXPECT_EQ(drawn.value(QStringLiteral("P_A80.wizParaSource")).toString(),
              QLatin1String("ParaTable"));
}

// Everything of the widget box on one form: what Designer saves is what the loader makes.
TEST_F(DesignerForm, EveryClassDroppedLoadsBackAsDrawn)
{
    QWidget *page = find<QWidget>(QStringLiteral("PageBus"));
    ASSERT_NE(page, nullptr);
    for (const QString &name : TwizFormLoader::libraryClasses()) {
        QWidget *w = drop(QStringLiteral("drivewiz::") + name, page);
        ASSERT_NE(w, nullptr) << name.toStdString();
        EXPECT_TRUE(form->isManaged(w));
    }
    runEvents();
    QString saved;
    const std::unique_ptr<QWidget> loaded = saveAndLoad(&saved);
    ASSERT_NE(loaded, nullptr) << saved.toStdString();
    const QMap<QString, QVariant> drawn = expectLoadedAsDrawn(loaded.get());
    EXPECT_TRUE(drawn.contains(QStringLiteral("BitLeiste.wizCaptions")));
}

// What a binary input changes in itself when its source is set (its name, the display
// parameter and bus bit it counts on) is in the saved form.
TEST_F(DesignerForm, BinaryInputsCountingOnIsSaved)
{
    QWidget *page = find<QWidget>(QStringLiteral("PageBus"));
    auto *input = qobject_cast<TBEinput *>(drop(QStringLiteral("drivewiz::TBEinput"), page));
    ASSERT_NE(input, nullptr);
    runEvents();
    QDesignerFormWindowCursorInterface *cursor = form->cursor();
    cursor->setWidgetProperty(input, QStringLiteral("wizParaSource"), QStringLiteral("ParaTable"));
    cursor->setWidgetProperty(input, QStringLiteral("wizAnzeigeParName"), QStringLiteral("E310"));
    cursor->setWidgetProperty(input, QStringLiteral("wizKoordinate"), QStringLiteral("A60"));
    drivewiz::test::recorder().answer(mrYes);
    cursor->setWidgetProperty(input, QStringLiteral("wizKoordinate"), QStringLiteral("A61"));
    runEvents();
    const std::unique_ptr<QWidget> loaded = saveAndLoad();
    ASSERT_NE(loaded, nullptr);
    auto *read = loaded->findChild<TBEinput *>(QStringLiteral("BE_A61"));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->wizAnzeigeParName(), QLatin1String("E311"));
    EXPECT_EQ(read->wizBusParBit(), 1);
}

QStringList g_warnings;

TEST_F(DesignerForm, FormWithPlainClassNamesOpensWithTheWidgetsAndKeepsItsNames)
{
    g_warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &text) { g_warnings << text; });
    open(formXml().remove(QStringLiteral("drivewiz::")));
    qInstallMessageHandler(previous);
    EXPECT_TRUE(g_warnings.filter(QStringLiteral("mismatch")).isEmpty())
        << g_warnings.join('\n').toStdString();
    auto *speed = find<TParaClass>(QStringLiteral("Speed"));
    ASSERT_NE(speed, nullptr);
    EXPECT_STREQ(speed->metaObject()->className(), "TParaClass");
    EXPECT_NE(speed->GetEditControl(), nullptr) << "the control shows its parameter";
    EXPECT_NE(find<TwizPageControl>(QStringLiteral("Pages")), nullptr);

    form->cursor()->setWidgetProperty(speed, QStringLiteral("wizKoordinate"),
                                      QStringLiteral("I12"));
    runEvents();
    EXPECT_EQ(speed->objectName(), QLatin1String("P_I12")) << "a new coordinate, a new name";
    QString saved;
    const std::unique_ptr<QWidget> loaded = saveAndLoad(&saved);
    EXPECT_FALSE(saved.contains(QLatin1String("class=\"drivewiz::"))) << saved.toStdString();
    EXPECT_TRUE(
        saved.contains(QLatin1String("<class>TParaClass</class>\n   <extends>QFrame</extends>")))
        << saved.toStdString();
    EXPECT_TRUE(saved.contains(QLatin1String("<widget class=\"TParaClass\" name=\"P_I12\">")));
    ASSERT_NE(loaded, nullptr);
    auto *read = loaded->findChild<TParaClass *>(QStringLiteral("P_I12"));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->GetKoordinate(), QLatin1String("I12"));
}

TEST_F(DesignerForm, PagesAreAddedAndRemovedThroughTheContainerExtension)
{
    auto *pages = find<TwizPageControl>(QStringLiteral("Pages"));
    ASSERT_NE(pages, nullptr);
    auto *container = qt_extension<QDesignerContainerExtension *>(core->extensionManager(), pages);
    ASSERT_NE(container, nullptr);
    EXPECT_STREQ(dynamic_cast<QObject *>(container)->metaObject()->className(),
                 "drivewiz::designer::PageControlContainer");
    ASSERT_EQ(container->count(), 1);
    container->addWidget(new QWidget);
    container->insertWidget(0, new QWidget);
    ASSERT_EQ(container->count(), 3);
    EXPECT_EQ(pages->tabText(0), QLatin1String("TabSheet3"));
    EXPECT_EQ(pages->tabText(1), QLatin1String("Feldbus"));
    EXPECT_EQ(pages->tabText(2), QLatin1String("TabSheet2"));
    // A removed page that comes back (undo) keeps its caption.
    QWidget *bus = container->widget(1);
    container->remove(1);
    EXPECT_FALSE(container->canRemove(2));
    container->insertWidget(2, bus);
    EXPECT_EQ(pages->tabText(2), QLatin1String("Feldbus"));
    container->setCurrentIndex(7);
    container->setCurrentIndex(2);
    EXPECT_EQ(container->currentIndex(), 2);
    EXPECT_EQ(pages->wizTreeView()->topLevelItemCount(), 3);
}
