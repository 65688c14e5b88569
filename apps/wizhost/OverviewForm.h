#ifndef DRIVEWIZ_WIZHOST_OVERVIEWFORM_H
#define DRIVEWIZ_WIZHOST_OVERVIEWFORM_H

#include <QString>

class QWidget;

namespace drivewiz::wizhost {

/// Writes the "Parameter overview" wizard as a form file: one page per parameter group of
/// the description file, each a scroll area with one parameter control per parameter the
/// user level may read (element 0 of arrays and records, axis 1 and drive-wide rows).
/// Returns the number of pages, or -1 with a reason in `error`.
int WriteOverviewForm(const QString &descriptionFile, int userLevel, const QString &uiFile,
                      QString &error);

/// Stacks the parameter controls of each overview page by their real heights once the
/// form is loaded (the form file can only guess them); hidden controls take no room.
void ArrangeOverviewForm(QWidget *form);

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_OVERVIEWFORM_H
