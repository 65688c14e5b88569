#include "widgets/BitMaps.h"

#include <QLabel>
#include <QPainter>
#include <QSvgRenderer>

namespace drivewiz {

namespace {

QString resourceOf(TBitMap which)
{
    switch (which) {
    case TBitMap::BE_KBQ:
        return QStringLiteral(":/drivewiz/pictures/be_kbq.svg");
    case TBitMap::BE_KBM:
        return QStringLiteral(":/drivewiz/pictures/be_kbm.svg");
    case TBitMap::OK:
        return QStringLiteral(":/drivewiz/pictures/ok.svg");
    case TBitMap::Cancel:
        return QStringLiteral(":/drivewiz/pictures/cancel.svg");
    }
    return QString();
}

QLabel *pictureLabel(QWidget *form, const char *name, TBitMap which, int x)
{
    auto *label = new QLabel(form);
    label->setObjectName(QLatin1String(name));
    label->setPixmap(wizBitMap(which));
    label->setGeometry(x, 0, label->pixmap().width(), label->pixmap().height());
    return label;
}

} // namespace

QSize wizBitMapSize(TBitMap which)
{
    const QSvgRenderer renderer(resourceOf(which));
    return renderer.isValid() ? renderer.defaultSize() : QSize();
}

QPixmap wizBitMap(TBitMap which, const QSize &size)
{
    QSvgRenderer renderer(resourceOf(which));
    if (!renderer.isValid()) return QPixmap();
    const QSize target = size.isEmpty() ? renderer.defaultSize() : size;
    // A QImage rather than a QPixmap as paint device: it needs no window system.
    QImage image(target, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    return QPixmap::fromImage(image);
}

TFrmBitMaps::TFrmBitMaps(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("FrmBitMaps"));
    ImgBE_KBQ = pictureLabel(this, "ImgBE_KBQ", TBitMap::BE_KBQ, 0);
    ImgBE_KBM = pictureLabel(this, "ImgBE_KBM", TBitMap::BE_KBM, ImgBE_KBQ->geometry().right() + 1);
    ImgOK = pictureLabel(this, "ImgOK", TBitMap::OK, ImgBE_KBM->geometry().right() + 1);
    ImgCancel = pictureLabel(this, "ImgCancel", TBitMap::Cancel, ImgOK->geometry().right() + 1);
}

TFrmBitMaps::~TFrmBitMaps() = default;

} // namespace drivewiz
