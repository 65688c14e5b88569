#ifndef DRIVEWIZ_DESIGNER_PAGECONTROLCONTAINER_H
#define DRIVEWIZ_DESIGNER_PAGECONTROLCONTAINER_H

#include <QPointer>
#include <QtDesigner/QDesignerContainerExtension>
#include <QtDesigner/QExtensionFactory>

namespace drivewiz {
class TwizPageControl;
}

namespace drivewiz::designer {

/// Designer's view of a wizard page control as a container: its pages are the tab pages;
/// Designer adds, inserts, removes and shows them through this extension. A new page is
/// captioned "TabSheet" + its number, as the drive tool names new tab sheets.
class PageControlContainer : public QObject, public QDesignerContainerExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerContainerExtension)

public:
    PageControlContainer(TwizPageControl *pages, QObject *parent);

    bool canAddWidget() const override { return true; }
    void addWidget(QWidget *page) override;
    int count() const override;
    int currentIndex() const override;
    void insertWidget(int index, QWidget *page) override;
    bool canRemove(int index) const override;
    void remove(int index) override;
    void setCurrentIndex(int index) override;
    QWidget *widget(int index) const override;

private:
    QString newCaption() const;

    QPointer<TwizPageControl> m_pages;
};

/// Makes PageControlContainer the container extension of every TwizPageControl.
class PageControlContainerFactory : public QExtensionFactory
{
    Q_OBJECT

public:
    explicit PageControlContainerFactory(QExtensionManager *parent = nullptr);

protected:
    QObject *createExtension(QObject *object, const QString &iid, QObject *parent) const override;
};

} // namespace drivewiz::designer

#endif // DRIVEWIZ_DESIGNER_PAGECONTROLCONTAINER_H
