#include "WizardCatalog.h"

namespace drivewiz::wizhost {

const QList<WizardInfo> &wizardCatalog()
{
    static const QList<WizardInfo> catalog = {
        {Wizard::Setup, QStringLiteral("setup"), QStringLiteral("cBtnSetup"),
         QStringLiteral("Drive set-up")},
        {Wizard::Overview, QStringLiteral("overview"), QStringLiteral("cBtnOverview"),
         QStringLiteral("Parameter overview")},
        {Wizard::Tables, QStringLiteral("tables"), QStringLiteral("cBtnTables"),
         QStringLiteral("Tables")},
        {Wizard::Inputs, QStringLiteral("inputs"), QStringLiteral("cBtnInputs"),
         QStringLiteral("Inputs")},
        {Wizard::Outputs, QStringLiteral("outputs"), QStringLiteral("cBtnOutputs"),
         QStringLiteral("Outputs and encoder")},
    };
    return catalog;
}

const WizardInfo *findWizard(const QString &name)
{
    for (const WizardInfo &w : wizardCatalog()) {
        if (w.name.compare(name, Qt::CaseInsensitive) == 0) return &w;
    }
    return nullptr;
}

const WizardInfo *findWizard(Wizard id)
{
    for (const WizardInfo &w : wizardCatalog()) {
        if (w.id == id) return &w;
    }
    return nullptr;
}

} // namespace drivewiz::wizhost
