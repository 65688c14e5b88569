#include "OutputsWizard.h"

#include "HostSession.h"

#include "lang/wizSprache.h"

#include <QDir>
#include <QWidget>

namespace drivewiz::wizhost {

QString OutputsWizardFile(const QString &formsDir)
{
    return QDir(formsDir).filePath(QStringLiteral("OutputsEncoder.ui"));
}

// The wizard reads its page captions when it loads, in the language of the program's
// first argument; the host's choice of language may differ, so they are read again.
void PrepareOutputsWizard(QWidget *form, const HostSession &session)
{
    form->setWindowTitle(session.caption(QStringLiteral("cWizOutputsTitle"), form->windowTitle()));
    ReadControls(session.languageFile(), session.language(), QStringLiteral("OutputsEncoder"),
                 form);
}

} // namespace drivewiz::wizhost
