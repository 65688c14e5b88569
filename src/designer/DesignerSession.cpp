// What the plugin does for Designer as a whole: extensions, dialogs, changed properties.

#include "designer/DesignerSession.h"

#include "designer/DesignerClasses.h"
#include "designer/PageControlContainer.h"
#include "host/wizFormLoader.h"
#include "platform/component.h"
#include "platform/dialogs.h"

#include <QTimer>
#include <QWidget>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerObjectInspectorInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QExtensionManager>

#include <algorithm>
#include <memory>

namespace drivewiz::designer {

namespace {

// While a form is drawn the components only ask: a coordinate, or a yes or no. Those
// questions go to the service that was in use before (Qt's dialogs in Designer); what
// the components would tell (a missing file, say) goes to Designer's output instead.
class DesignTimeDialogs : public DialogService
{
public:
    explicit DesignTimeDialogs(std::unique_ptr<DialogService> asking)
        : m_asking(asking ? std::move(asking) : std::make_unique<QtDialogService>())
    {}

    void showMessage(const QString &text) override { log(text); }
    int messageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons) override
    {
        if (buttons & (mbYes | mbNo | mbCancel)) return m_asking->messageDlg(text, type, buttons);
        log(text);
        return mrOk;
    }
    bool inputQuery(const QString &caption, const QString &prompt, QString &value) override
    {
        return m_asking->inputQuery(caption, prompt, value);
    }
    void beep() override {}
    QString getOpenFileName(const QString &caption, const QString &dir,
                            const QString &filter) override
    {
        return m_asking->getOpenFileName(caption, dir, filter);
    }
    QString getSaveFileName(const QString &caption, const QString &dir,
                            const QString &filter) override
    {
        return m_asking->getSaveFileName(caption, dir, filter);
    }

private:
    static void log(QString text)
    {
        text.replace(QLatin1Char('\r'), QLatin1Char(' '));
        qWarning("drivewiz: %s", qPrintable(text));
    }

    std::unique_ptr<DialogService> m_asking;
};

} // namespace

DesignerSession::DesignerSession(QObject *parent) : QObject(parent) {}

DesignerSession::~DesignerSession() = default;

void DesignerSession::attach(QDesignerFormEditorInterface *core)
{
    if (m_core || !core) return;
    m_core = core;
    QExtensionManager *manager = core->extensionManager();
    manager->registerExtensions(new PageControlContainerFactory(manager),
                                Q_TYPEID(QDesignerContainerExtension));
    std::unique_ptr<DialogService> asking = setDialogService(nullptr);
    setDialogService(std::make_unique<DesignTimeDialogs>(std::move(asking)));
    QDesignerFormWindowManagerInterface *forms = core->formWindowManager();
    connect(forms, &QDesignerFormWindowManagerInterface::formWindowAdded, this,
            &DesignerSession::watchForm);
    for (int i = 0; i < forms->formWindowCount(); ++i)
        watchForm(forms->formWindow(i));
}

void DesignerSession::watchForm(QDesignerFormWindowInterface *form)
{
    connect(form, &QDesignerFormWindowInterface::changed, this, [this, form = QPointer(form)] {
        if (!form) return;
        reportChanges(form);
        refreshLater(form);
    });
}

void DesignerSession::startLater(QWidget *widget)
{
    if (m_starting.isEmpty()) QTimer::singleShot(0, this, &DesignerSession::startPending);
    m_starting << widget;
}

// The new widgets and the components they made inside themselves (a frame's inputs and
// parameter controls) start in the order the form loader starts a form.
void DesignerSession::startPending()
{
    QList<QWidget *> widgets;
    for (const QPointer<QWidget> &widget : std::as_const(m_starting)) {
        if (!widget) continue;
        widgets << widget;
        widgets << widget->findChildren<QWidget *>();
    }
    m_starting.clear();
    std::stable_sort(widgets.begin(), widgets.end(), [](const QWidget *a, const QWidget *b) {
        return TwizFormLoader::StartupRank(a) < TwizFormLoader::StartupRank(b);
    });
    // Loaded() may delete widgets further down the list, so each is checked before its turn.
    const QList<QPointer<QWidget>> guarded(widgets.begin(), widgets.end());
    QList<QPointer<QDesignerFormWindowInterface>> forms;
    for (const QPointer<QWidget> &widget : guarded) {
        auto *component = widget ? dynamic_cast<Component *>(widget.data()) : nullptr;
        if (component && component->isLoading()) component->Loaded();
        auto *form = widget ? QDesignerFormWindowInterface::findFormWindow(widget) : nullptr;
        if (form && !forms.contains(form)) forms << form;
    }
    for (const auto &form : std::as_const(forms)) {
        if (!form) continue;
        reportChanges(form);
        refreshLater(form);
    }
}

// The object inspector shows names the components gave themselves, the property editor
// values they set; both once the current event is done, as it may come from them.
void DesignerSession::refreshLater(QDesignerFormWindowInterface *form)
{
    if (m_refreshPending) return;
    m_refreshPending = true;
    QTimer::singleShot(0, this, [this, form = QPointer(form)] {
        m_refreshPending = false;
        if (!m_core || !form) return;
        if (QDesignerObjectInspectorInterface *inspector = m_core->objectInspector())
            inspector->setFormWindow(form);
        QDesignerPropertyEditorInterface *editor = m_core->propertyEditor();
        if (editor && editor->object()) editor->setObject(editor->object());
    });
}

int DesignerSession::reportChanges(QDesignerFormWindowInterface *form)
{
    if (!m_core || !form || !form->mainContainer()) return 0;
    QList<QWidget *> widgets = form->mainContainer()->findChildren<QWidget *>();
    widgets.prepend(form->mainContainer());
    int marked = 0;
    for (QWidget *widget : std::as_const(widgets)) {
        const QVariantMap defaults = defaultValues(widget->metaObject());
        if (defaults.isEmpty() || !form->isManaged(widget)) continue;
        auto *sheet =
            qt_extension<QDesignerPropertySheetExtension *>(m_core->extensionManager(), widget);
        if (!sheet) continue;
        for (auto it = defaults.cbegin(); it != defaults.cend(); ++it) {
            const int index = sheet->indexOf(it.key());
            if (index < 0 || sheet->isChanged(index) ||
                widget->property(it.key().toLatin1().constData()) == it.value())
                continue;
            sheet->setChanged(index, true);
            ++marked;
        }
    }
    return marked;
}

QVariantMap DesignerSession::defaultValues(const QMetaObject *meta)
{
    static QHash<const QMetaObject *, QVariantMap> cache;
    const DesignerClass *cls = designerClassOf(meta);
    if (!cls) return {};
    const auto cached = cache.constFind(cls->metaObject);
    if (cached != cache.cend()) return *cached;
    QVariantMap values;
    const std::unique_ptr<QWidget> widget(cls->create(nullptr));
    for (const QMetaProperty &p : libraryProperties(cls->metaObject))
        values.insert(QLatin1String(p.name()), p.read(widget.get()));
    cache.insert(cls->metaObject, values);
    return values;
}

} // namespace drivewiz::designer
