#ifndef DRIVEWIZ_WIDGETS_BITMAPS_H
#define DRIVEWIZ_WIDGETS_BITMAPS_H

#include "drivewiz_global.h"

#include <QPixmap>
#include <QSize>
#include <QWidget>

class QLabel;

namespace drivewiz {

/// The pictures that frames share.
enum class TBitMap {
    BE_KBQ, ///< option board KBQ 7700 with its binary inputs on X103
    BE_KBM, ///< option board KBM 7700 with its binary inputs on X103
    OK,     ///< a green check mark
    Cancel, ///< a red cross
};

/// A picture drawn from its SVG resource at `size` (its own size when `size` is empty).
/// Rendered in software, so it works without a display; null only when the resource is
/// missing.
DRIVEWIZ_EXPORT QPixmap wizBitMap(TBitMap which, const QSize &size = QSize());

/// The picture's own size.
DRIVEWIZ_EXPORT QSize wizBitMapSize(TBitMap which);

/// A form that is never shown: it only holds the shared pictures, as labels named after
/// them, from which frames copy the pixmap at run time. wizBitMap() gives the same
/// pictures at any size without the form.
class DRIVEWIZ_EXPORT TFrmBitMaps : public QWidget
{
    Q_OBJECT

public:
    explicit TFrmBitMaps(QWidget *parent = nullptr);
    ~TFrmBitMaps() override;

    QLabel *ImgBE_KBQ = nullptr;
    QLabel *ImgBE_KBM = nullptr;
    QLabel *ImgOK = nullptr;
    QLabel *ImgCancel = nullptr;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIDGETS_BITMAPS_H
