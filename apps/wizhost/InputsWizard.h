#ifndef DRIVEWIZ_WIZHOST_INPUTSWIZARD_H
#define DRIVEWIZ_WIZHOST_INPUTSWIZARD_H

#include <QString>

class QWidget;

namespace drivewiz::wizhost {

class HostSession;

/// The form file of the Inputs wizard in the host's forms folder.
QString InputsWizardFile(const QString &formsDir);

/// The host's part of the Inputs wizard: its title from the host's language file
/// (section "DemoInputs", key "cWizInputsTitle").
void PrepareInputsWizard(QWidget *form, HostSession &session);

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_INPUTSWIZARD_H
