#ifndef DRIVEWIZ_WIZARD_PARAMVIEWS_P_H
#define DRIVEWIZ_WIZARD_PARAMVIEWS_P_H

// What the compare and journal views share: their lists and their dialogs' Close row.

#include <QBoxLayout>
#include <QDialog>
#include <QFontMetrics>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>

namespace drivewiz::paramviews {

/// A read-only list of whole rows, one current row, Tab leaving it, rows as high as
/// their font needs.
inline QTableView *makeList(QWidget *parent, const char *name)
{
    auto *view = new QTableView(parent);
    view->setObjectName(QLatin1String(name));
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTabKeyNavigation(false);
    view->setWordWrap(false);
    view->setAlternatingRowColors(true);
    view->verticalHeader()->hide();
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 8);
    return view;
}

/// A dialog laid out as `content` above a right-aligned Close button (not default, so
/// Enter stays the content's); Close and Escape reject the dialog.
inline QPushButton *layOutDialog(QDialog *dialog, QWidget *content, const char *closeName)
{
    auto *top = new QVBoxLayout(dialog);
    top->addWidget(content, 1);
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    auto *close = new QPushButton(dialog);
    close->setObjectName(QLatin1String(closeName));
    close->setAutoDefault(false);
    row->addWidget(close);
    top->addLayout(row);
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::reject);
    return close;
}

} // namespace drivewiz::paramviews

#endif // DRIVEWIZ_WIZARD_PARAMVIEWS_P_H
