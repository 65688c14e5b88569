#ifndef DRIVEWIZ_WIZHOST_OUTPUTSWIZARD_H
#define DRIVEWIZ_WIZHOST_OUTPUTSWIZARD_H

#include <QString>

class QWidget;

namespace drivewiz::wizhost {

class HostSession;

/// The form of the wizard "Outputs and encoder" (forms/OutputsEncoder.ui): both analog
/// outputs, the binary outputs of the drive and its option board, and the encoder frame
/// whose page the connection selector I02 chooses.
QString OutputsWizardFile(const QString &formsDir);

/// The host's part of that wizard: its title and page captions from the host's language
/// file (section "OutputsEncoder"), in the language the session has now.
void PrepareOutputsWizard(QWidget *form, const HostSession &session);

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_OUTPUTSWIZARD_H
