#ifndef DRIVEWIZ_WIZHOST_WIZARDCATALOG_H
#define DRIVEWIZ_WIZHOST_WIZARDCATALOG_H

#include <QList>
#include <QString>

namespace drivewiz::wizhost {

/// The wizards of the demo host; the value is the wizard id handed to the callbacks.
enum class Wizard { Setup = 1, Overview = 2, Outputs = 3, Inputs = 4, Tables = 5 };

/// One wizard the demo host offers. The host window makes a button for each, in this
/// order; `--open <name>` opens it at start; the tests open every one of them.
struct WizardInfo
{
    Wizard id;
    QString name;       ///< for --open: "setup"
    QString captionKey; ///< key in the language file's section "Demo": button and title
    QString caption;    ///< the English caption when the language file lacks the key
};

/// Every wizard the demo host offers. A new wizard is added here (and its form in
/// HostSession::formFile); buttons, --open, --help and the tests follow.
const QList<WizardInfo> &wizardCatalog();
/// The entry of a name or id; null when there is none.
const WizardInfo *findWizard(const QString &name);
const WizardInfo *findWizard(Wizard id);

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_WIZARDCATALOG_H
