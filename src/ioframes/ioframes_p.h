#ifndef DRIVEWIZ_IOFRAMES_IOFRAMES_P_H
#define DRIVEWIZ_IOFRAMES_IOFRAMES_P_H

// Helpers the I/O frames share: building a frame's form, pictures, depth-first search
// and coordinates as form files write them.

#include "platform/component.h"

#include <QList>
#include <QPixmap>
#include <QSize>
#include <QString>
#include <QWidget>

#include <functional>

class QLabel;

namespace drivewiz {

class IniFile;
class TParaTable;

namespace ioframes {

/// Runs a frame's setupUi. Inside a form that is being loaded the frame's parts load
/// with it (the loader calls their Loaded()); a frame made by code loads its parts at
/// once, parameter controls first.
void setupForm(QWidget *frame, const std::function<void()> &setupUi);

/// The arrow picture (":/drivewiz/pictures/arrow_right.svg") at a size: the shaft
/// stretched to the width, the head in its own proportions.
QPixmap arrowPicture(const QSize &size);
/// Shows the arrow on a label at the label's size.
void showArrow(QLabel *label);

/// The first widget below `root`, depth first in child order, for which `match` holds;
/// children of widgets for which `descend` is false are skipped.
QWidget *findDepthFirst(QWidget *root, const std::function<bool(QWidget *)> &match,
                        const std::function<bool(QWidget *)> &descend);

/// A coordinate as form files may write it: trimmed, a leading "$" (axis-independent)
/// dropped.
QString formKoordinate(const QString &text);

/// Whether a component acts at run time: not loading, not being designed.
inline bool atRunTime(const Component &c)
{
    return !c.isLoading() && !c.isDesigning();
}

/// Translates a frame's own parts with the keys ReadControls uses ("h" + name for the
/// hint, "c" + name for the caption of a label or button), without descending into them:
/// the parameter controls inside a frame take their texts from the descriptions.
void translateParts(const IniFile *ini, const QString &section, const QList<QWidget *> &parts);

/// The table of a form by object name (none for an empty name).
TParaTable *tableByName(QWidget *anywhere, const QString &objectName);

} // namespace ioframes
} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_IOFRAMES_P_H
