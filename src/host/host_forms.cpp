// The C entry points of host_api.h for wizard forms loaded from .ui files.

#include "drivewiz/host_api.h"

#include "host/host_api_p.h"
#include "host/wizFormLoader.h"
#include "lang/wizDLLDefs.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <string>

using drivewiz::TParaClass;
using drivewiz::TParaTable;

struct dwz_form
{
    QPointer<QDialog> dialog;
    QPointer<TParaTable> table;
    QMetaObject::Connection finished;
    int result = -1;
    int execDepth = 0;      // dwz_form_exec calls running (a nested loop holds the form)
    bool destroyed = false; // the host called dwz_form_destroy
};

namespace {

thread_local std::string lastError;

dwz_form *fail(const QString &why)
{
    lastError = why.toStdString();
    return nullptr;
}

QString text(const char *utf8)
{
    return utf8 ? QString::fromUtf8(utf8) : QString();
}

// Forms drawn as plain widgets are put into a dialog, so that every form can be shown
// modally and closed with a result.
QDialog *asDialog(QWidget *root)
{
    if (auto *dialog = qobject_cast<QDialog *>(root)) return dialog;
    auto *dialog = new QDialog;
    dialog->setObjectName(root->objectName());
    dialog->setWindowTitle(root->windowTitle());
    dialog->resize(root->size());
    auto *layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(root);
    return dialog;
}

bool hasPageControl(const QWidget *form)
{
    for (const QWidget *w : form->findChildren<QWidget *>()) {
        if (w->inherits("drivewiz::TwizPageControl")) return true;
    }
    return false;
}

// OK and Cancel stand where a wizard page control puts them: OK at the right end of the
// pages, Cancel left of it, in the row of the back button. Without a back button they
// go to the form's lower right corner.
void placeButtons(QDialog *dialog, QPushButton *ok, QPushButton *cancel)
{
    QWidget *pages = nullptr;
    QWidget *back = nullptr;
    for (QTabWidget *tabs : dialog->findChildren<QTabWidget *>()) {
        const QString name = tabs->property("wizBtnBack").toString();
        back = name.isEmpty() ? nullptr : dialog->findChild<QAbstractButton *>(name);
        if (back && back->parentWidget() == tabs->parentWidget()) {
            pages = tabs;
            break;
        }
    }
    if (!pages) {
        const int w = 75, h = 25;
        ok->setGeometry(dialog->width() - w - 10, dialog->height() - h - 10, w, h);
        cancel->setGeometry(ok->x() - w * 4 / 3, ok->y(), w, h);
        return;
    }
    const int w = back->width();
    ok->setParent(back->parentWidget());
    cancel->setParent(back->parentWidget());
    ok->setGeometry(pages->x() + pages->width() - w * 3 / 2, back->y(), w, back->height());
    cancel->setGeometry(ok->x() - w * 4 / 3, back->y(), w, back->height());
    back->hide(); // going back is the page control's business
}

// Without a wizard page control nobody saves the values: plain buttons do it, as OK and
// Cancel of a wizard would (offline, OK writes every value).
void addPlainButtons(QDialog *dialog, TParaTable *table)
{
    if (dialog->findChild<QAbstractButton *>(QStringLiteral("BtnOK"))) return;
    auto *ok = new QPushButton(QStringLiteral("OK"), dialog);
    ok->setObjectName(QStringLiteral("BtnOK"));
    auto *cancel = new QPushButton(drivewiz::s_Cancel, dialog);
    cancel->setObjectName(QStringLiteral("BtnCancel"));
    placeButtons(dialog, ok, cancel);
    QObject::connect(ok, &QPushButton::clicked, dialog, [dialog, table = QPointer(table)] {
        if (table && table->Online() == drivewiz::omOffline) table->PostAllParams();
        dialog->accept();
    });
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    ok->show();
    cancel->show();
}

// The first field of the page in front takes the focus, so that the user can type at once.
void focusFirstField(QDialog *dialog)
{
    QWidget *scope = dialog;
    if (auto *tabs = dialog->findChild<QTabWidget *>(); tabs && tabs->currentWidget())
        scope = tabs->currentWidget();
    for (TParaClass *c : scope->findChildren<TParaClass *>()) {
        QWidget *input = c->GetEditControl();
        if (input && input->isVisibleTo(dialog) && input->isEnabled()) {
            input->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

QWidget *loadWithTable(const QString &path, TParaTable *&table, QString &why)
{
    drivewiz::TwizFormLoader loader;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = QStringLiteral("cannot read the form file \"%1\": %2").arg(path, file.errorString());
        return nullptr;
    }
    QWidget *root = nullptr;
    {
        drivewiz::FormLoadScope scope;
        root = loader.load(&file);
    }
    if (!root) {
        why = QStringLiteral("\"%1\" is no form: %2").arg(path, loader.errorString());
        return nullptr;
    }
    table = root->findChildren<TParaTable *>().value(0);
    if (!table) {
        why = QStringLiteral("the form \"%1\" has no parameter table (TParaTable)").arg(path);
        delete root;
        return nullptr;
    }
    return root;
}

} // namespace

extern "C" {

const char *dwz_last_error(void)
{
    return lastError.c_str();
}

dwz_form *dwz_form_create(const char *uiFile, const dwz_callbacks *callbacks, uint32_t wizardId,
                          int userLevel, int language, int onlineMode, const char *descriptionFile)
{
    lastError.clear();
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return fail(QStringLiteral("no application object: call dwz_init first"));
    if (!uiFile || !*uiFile) return fail(QStringLiteral("no form file given"));
    if (onlineMode < DWZ_OFFLINE || onlineMode > DWZ_READBACK)
        return fail(QStringLiteral("unknown online mode %1").arg(onlineMode));
    TParaTable *table = nullptr;
    QString why;
    QWidget *root = loadWithTable(text(uiFile), table, why);
    if (!root) return fail(why);

    // Everything the table needs for its start-up is set before Loaded() runs.
    if (descriptionFile && *descriptionFile) table->SetParamFileName(text(descriptionFile));
    if (callbacks) table->SetCallbacks(*callbacks);
    table->SetWizardId(wizardId);
    if (table->wizIdString().isEmpty()) table->SetWizIdString(root->objectName());
    if (userLevel > 0) table->SetMaxRLevel(userLevel);
    table->SetOnline(drivewiz::tOnlineModus(onlineMode));
    drivewiz::TwizFormLoader::CallLoaded(root);
    if (language > 0) table->SetLanguage(language);

    auto *form = new dwz_form;
    form->dialog = asDialog(root);
    form->table = table;
    form->finished =
        QObject::connect(form->dialog, &QDialog::finished, form->dialog,
                         [form](int r) { form->result = r == QDialog::Accepted ? 1 : 0; });
    addPlainButtons(form->dialog, table);
    if (callbacks && callbacks->get_para_value) table->ReadAllParams();
    // A wizard page control subscribes the parameters of the page it shows; without one
    // the form's parameters are subscribed all at once, as the table does on a switch.
    if (onlineMode == DWZ_ONLINE && !hasPageControl(root)) table->RegisterOnlineUpdatePars(root);
    return form;
}

dwz_table *dwz_form_table(dwz_form *form)
{
    return form && form->table ? reinterpret_cast<dwz_table *>(form->table.data()) : nullptr;
}

// The form may be destroyed by the host while it runs (from a callback or the host's own
// events): the struct then lives until this call is done with it.
int dwz_form_exec(dwz_form *form)
{
    if (!form || form->destroyed || !form->dialog) return 0;
    QPointer<QDialog> dialog = form->dialog;
    QTimer::singleShot(0, dialog, [dialog] {
        if (dialog) focusFirstField(dialog);
    });
    ++form->execDepth;
    dialog->exec();
    --form->execDepth;
    const int result = form->result == 1 ? 1 : 0;
    if (form->destroyed && form->execDepth == 0) delete form;
    return result;
}

int dwz_form_show(dwz_form *form)
{
    if (!form || form->destroyed || !form->dialog) return 0;
    form->dialog->show();
    form->dialog->raise();
    form->dialog->activateWindow();
    focusFirstField(form->dialog);
    return form->dialog->isVisible() ? 1 : 0;
}

int dwz_form_result(const dwz_form *form)
{
    return form ? form->result : -1;
}

// A host may destroy a form from inside one of its callbacks, or from its own events that
// the library lets run, although the interface forbids the first: the library is then
// still working on the form. It is cut off from the host and hidden at once, and freed
// when the library is done with it (deleteLater: after the event being handled).
void dwz_form_destroy(dwz_form *form)
{
    if (!form || form->destroyed) return; // a second destroy from inside the first
    form->destroyed = true;
    QObject::disconnect(form->finished);
    const bool inUse = drivewiz::HostCallScope::depth() > 0 || form->execDepth > 0;
    if (inUse) {
        if (form->table) form->table->DetachHost();
        if (form->dialog) {
            form->dialog->hide();
            drivewiz::hostapi::freeWhenDone(form->dialog);
        }
    } else {
        if (form->table) form->table->ClearUpdateList();
        delete form->dialog.data();
    }
    if (form->execDepth == 0) delete form;
}

uintptr_t dwz_form_window(const dwz_form *form)
{
    return form && form->table ? uintptr_t(form->table->WindowHandle()) : 0;
}

void *dwz_form_widget(const dwz_form *form)
{
    return form ? static_cast<QWidget *>(form->dialog.data()) : nullptr;
}

} // extern "C"
