#include "InputsWizard.h"

#include "HostSession.h"

#include "lang/wizSprache.h"

#include <QDir>
#include <QWidget>

namespace drivewiz::wizhost {

QString InputsWizardFile(const QString &formsDir)
{
    return QDir(formsDir).filePath(QStringLiteral("Inputs.ui"));
}

void PrepareInputsWizard(QWidget *form, HostSession &session)
{
    form->setWindowTitle(wizReadString(session.languageFile(), QStringLiteral("DemoInputs"),
                                       QStringLiteral("cWizInputsTitle"), form->windowTitle()));
}

} // namespace drivewiz::wizhost
