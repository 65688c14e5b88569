#ifndef DRIVEWIZ_WIZARD_PARAMVIEWS_P_H
#define DRIVEWIZ_WIZARD_PARAMVIEWS_P_H

// What the compare and journal views share: their lists and their dialogs' Close row.

#include <QBoxLayout>
#include <QDialog>
#include <QFontMetrics>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

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

/// The width a list needs to show its columns in full (each at most `maxColumn` wide),
/// with its frame and scroll bar; at most nine tenths of the screen.
inline int listWidth(const QTableView *view, int maxColumn)
{
    const auto *items = static_cast<const QAbstractItemView *>(view);
    const QHeaderView *h = view->horizontalHeader();
    // Frame, scroll bar, grid lines and the style's cell margins.
    int width = 2 * view->frameWidth() + view->verticalScrollBar()->sizeHint().width() +
                view->fontMetrics().averageCharWidth() * 6;
    for (int c = 0; c < h->count(); ++c) {
        if (h->isSectionHidden(c)) continue;
        const int content = std::max(h->sectionSizeHint(c), items->sizeHintForColumn(c));
        // A column already sized to its texts (and to a grid line) keeps that width.
        const bool last = c == h->count() - 1 && h->stretchLastSection();
        width += std::min(maxColumn, last ? content + 2 : std::max(content, h->sectionSize(c)));
    }
    if (const QScreen *screen = view->screen())
        width = std::min(width, screen->availableGeometry().width() * 9 / 10);
    return width;
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

/// Sizes a dialog to what its content asks for, up to nine tenths of the screen (a
/// window's first show would stop at two thirds).
inline void fitDialog(QDialog *dialog)
{
    QSize size = dialog->sizeHint();
    if (const QScreen *screen = dialog->screen())
        size = size.boundedTo(screen->availableGeometry().size() * 9 / 10);
    dialog->resize(size);
}

} // namespace drivewiz::paramviews

#endif // DRIVEWIZ_WIZARD_PARAMVIEWS_P_H
