#include "ioframes/ioframes_p.h"

#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QSvgRenderer>
#include <QApplication>

#include <algorithm>

namespace drivewiz::ioframes {

void setupForm(QWidget *frame, const std::function<void()> &setupUi)
{
    if (FormLoadScope::active()) {
        setupUi();
        return;
    }
    {
        FormLoadScope scope;
        setupUi();
    }
    QList<QWidget *> parts = frame->findChildren<QWidget *>();
    std::stable_sort(parts.begin(), parts.end(), [](QWidget *a, QWidget *b) {
        return qobject_cast<TParaClass *>(a) && !qobject_cast<TParaClass *>(b);
    });
    const QList<QPointer<QWidget>> guarded(parts.begin(), parts.end());
    for (const QPointer<QWidget> &w : guarded) {
        if (auto *component = w ? dynamic_cast<Component *>(w.data()) : nullptr)
            component->Loaded();
    }
}

QPixmap arrowPicture(const QSize &size)
{
    QSvgRenderer renderer(QStringLiteral(":/drivewiz/pictures/arrow_right.svg"));
    if (!renderer.isValid() || size.isEmpty()) return QPixmap();
    // Drawn for the screen's device pixels, so the arrow stays sharp at any scale.
    const qreal ratio = qApp ? qApp->devicePixelRatio() : 1.0;
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(ratio, ratio);
    const qreal w = size.width();
    const qreal h = size.height();
    const qreal head = std::min(w, h);
    if (w > head) renderer.render(&painter, QStringLiteral("shaft"), QRectF(0, h * 5 / 12, w - head, h / 6));
    renderer.render(&painter, QStringLiteral("head"), QRectF(w - head, (h - head) / 2, head, head));
    painter.end();
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

void showArrow(QLabel *label)
{
    if (!label) return;
    const QPixmap current = label->pixmap();
    if (!current.isNull() && current.deviceIndependentSize().toSize() == label->size()) return;
    label->setPixmap(arrowPicture(label->size()));
}

QWidget *findDepthFirst(QWidget *root, const std::function<bool(QWidget *)> &match,
                        const std::function<bool(QWidget *)> &descend)
{
    if (!root) return nullptr;
    for (QObject *child : root->children()) {
        if (!child->isWidgetType()) continue;
        auto *w = static_cast<QWidget *>(child);
        if (match(w)) return w;
        if (descend(w)) {
            if (QWidget *hit = findDepthFirst(w, match, descend)) return hit;
        }
    }
    return nullptr;
}

QString formKoordinate(const QString &text)
{
    QString k = text.trimmed();
    if (k.startsWith(QLatin1Char('$'))) k.remove(0, 1);
    return k;
}

TParaTable *tableByName(QWidget *anywhere, const QString &objectName)
{
    if (!anywhere || objectName.isEmpty()) return nullptr;
    QWidget *form = anywhere->window();
    return form ? form->findChild<TParaTable *>(objectName) : nullptr;
}

} // namespace drivewiz::ioframes
