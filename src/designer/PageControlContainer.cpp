// The wizard page control as a container in Designer.

#include "designer/PageControlContainer.h"

#include "wizard/wizPageControl.h"

namespace drivewiz::designer {

PageControlContainer::PageControlContainer(TwizPageControl *pages, QObject *parent)
    : QObject(parent), m_pages(pages)
{}

// The first caption "TabSheet<n>" no page has yet, n counting from the page count + 1.
QString PageControlContainer::newCaption() const
{
    for (int n = count() + 1;; ++n) {
        const QString caption = QStringLiteral("TabSheet%1").arg(n);
        if (!m_pages->FindTabSheet(caption)) return caption;
    }
}

void PageControlContainer::addWidget(QWidget *page)
{
    insertWidget(count(), page);
}

int PageControlContainer::count() const
{
    return m_pages ? m_pages->count() : 0;
}

int PageControlContainer::currentIndex() const
{
    return m_pages ? m_pages->currentIndex() : -1;
}

void PageControlContainer::insertWidget(int index, QWidget *page)
{
    if (!m_pages || !page) return;
    // A page Designer brings back (undo, paste) keeps its caption.
    const QString caption = page->windowTitle().isEmpty() ? newCaption() : page->windowTitle();
    m_pages->insertTab(index, page, caption);
}

bool PageControlContainer::canRemove(int index) const
{
    return index >= 0 && index < count();
}

void PageControlContainer::remove(int index)
{
    if (!canRemove(index)) return;
    QWidget *page = m_pages->widget(index);
    page->setWindowTitle(m_pages->tabText(index));
    m_pages->removeTab(index);
}

void PageControlContainer::setCurrentIndex(int index)
{
    if (m_pages && index >= 0 && index < count()) m_pages->setCurrentIndex(index);
}

QWidget *PageControlContainer::widget(int index) const
{
    return m_pages ? m_pages->widget(index) : nullptr;
}

PageControlContainerFactory::PageControlContainerFactory(QExtensionManager *parent)
    : QExtensionFactory(parent)
{}

QObject *PageControlContainerFactory::createExtension(QObject *object, const QString &iid,
                                                      QObject *parent) const
{
    if (iid != Q_TYPEID(QDesignerContainerExtension)) return nullptr;
    if (auto *pages = qobject_cast<TwizPageControl *>(object))
        return new PageControlContainer(pages, parent);
    return nullptr;
}

} // namespace drivewiz::designer
