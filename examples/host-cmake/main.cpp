// A host program: opens the wizard drawn in wizard.ui with the parameter descriptions
// beside it, and prints every value the wizard writes when the user closes it with OK.
//
//   host-example [language] [--check]
//
// language: 1 German (default), 2 English. --check shows the wizard, prints what was
// built and quits: 0 when every parameter control found its parameter.

#include <drivewiz/host/wizFormLoader.h>
#include <drivewiz/paramctrls/ParamCtrls.h>
#include <drivewiz/paramtable/ParaTable.h>
#include <drivewiz/platform/component.h>
#include <drivewiz/wizard/wizPageControl.h>

#include <QApplication>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <memory>

namespace {

// The drive: here only a printout. 0 means written.
char setValue(const char *value, uint32_t wizardId, uint32_t address, int32_t)
{
    std::printf("wizard %u writes %08X = %s\n", unsigned(wizardId), unsigned(address), value);
    return 0;
}

int check(QWidget *form, drivewiz::TParaTable *table)
{
    const auto *pages = form->findChild<drivewiz::TwizPageControl *>();
    int drawn = 0;
    int built = 0;
    for (const drivewiz::TParaClass *control : form->findChildren<drivewiz::TParaClass *>()) {
        if (pages && control == pages->E48Control()) continue; // the page control's own
        ++drawn;
        built += control->GetEditControl() != nullptr;
    }
    std::printf("%s: %d pages, %d of %d parameter controls built, %d parameters described\n",
                qPrintable(form->objectName()), pages ? pages->count() : 0, built, drawn,
                table->RowCount());
    return drawn > 0 && built == drawn ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QDir here(QCoreApplication::applicationDirPath());

    QFile file(here.filePath(QStringLiteral("wizard.ui")));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(file.fileName()));
        return 1;
    }
    drivewiz::TwizFormLoader loader;
    std::unique_ptr<QWidget> form;
    {
        // The form's properties are set first; the components start up afterwards, once
        // the host has given the table what it needs.
        drivewiz::FormLoadScope loading;
        form.reset(loader.load(&file));
    }
    auto *table = form ? form->findChild<drivewiz::TParaTable *>() : nullptr;
    if (!table) {
        std::fprintf(stderr, "no wizard with a parameter table: %s\n",
                     qPrintable(loader.errorString()));
        return 1;
    }
    table->SetParamFileName(here.filePath(QStringLiteral("Parameter.csv")));
    dwz_callbacks callbacks = {};
    callbacks.set_para_value = setValue;
    table->SetCallbacks(callbacks);
    table->SetWizardId(7);
    drivewiz::TwizFormLoader::CallLoaded(form.get());

    form->show();
    if (app.arguments().contains(QStringLiteral("--check"))) return check(form.get(), table);
    return app.exec();
}
