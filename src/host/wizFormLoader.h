#ifndef DRIVEWIZ_HOST_WIZFORMLOADER_H
#define DRIVEWIZ_HOST_WIZFORMLOADER_H

#include "drivewiz_global.h"

#include <QStringList>
#include <QUiLoader>

namespace drivewiz {

/// Loads wizard forms drawn in Qt Designer at run time, creating the library's classes
/// (TParaTable, TParaClass, TwizEdit ...) by their class names. Every component starts in
/// the loading state while the form's properties are set; then Loaded() runs on each in
/// the start-up order: parameter tables, parameter controls, then the rest.
class DRIVEWIZ_EXPORT TwizFormLoader : public QUiLoader
{
    Q_OBJECT

public:
    explicit TwizFormLoader(QObject *parent = nullptr);

    /// Loads a .ui file; null (with errorString()) when the file cannot be read or is no
    /// form.
    QWidget *loadForm(const QString &fileName, QWidget *parent = nullptr);
    /// The library's class names this loader creates.
    static QStringList libraryClasses();

    QWidget *createWidget(const QString &className, QWidget *parent = nullptr,
                          const QString &name = QString()) override;

    /// Calls Loaded() on every component of a form in start-up order. Forms built by uic
    /// call it after setupUi() (inside a FormLoadScope).
    static void CallLoaded(QWidget *form);
    /// A widget's place in the start-up order: lower ranks start first.
    static int StartupRank(const QWidget *widget);
};

} // namespace drivewiz

#endif // DRIVEWIZ_HOST_WIZFORMLOADER_H
