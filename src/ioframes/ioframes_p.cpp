#include "ioframes/ioframes_p.h"

#include "paramctrls/ParamCtrls.h"
#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QSvgRenderer>
#include <QAbstractButton>
#include <QApplication>
#include <QHash>
#include <QPair>

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
    // Many rows show arrows of a few sizes: the picture is read once and drawn once a size.
    static QSvgRenderer renderer(QStringLiteral(":/drivewiz/pictures/arrow_right.svg"));
    static QHash<QPair<QSize, qreal>, QPixmap> drawn;
    if (!renderer.isValid() || size.isEmpty()) return QPixmap();
    const qreal ratio = qApp ? qApp->devicePixelRatio() : 1.0;
    const auto key = qMakePair(size, ratio);
    if (const auto it = drawn.constFind(key); it != drawn.constEnd()) return it.value();
    // Drawn for the screen's device pixels, so the arrow stays sharp at any scale.
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(ratio, ratio);
    const qreal w = size.width();
    const qreal h = size.height();
    const qreal head = std::min(w, h);
    if (w > head)
        renderer.render(&painter, QStringLiteral("shaft"), QRectF(0, h * 5 / 12, w - head, h / 6));
    renderer.render(&painter, QStringLiteral("head"), QRectF(w - head, (h - head) / 2, head, head));
    painter.end();
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(ratio);
    if (drawn.size() > 64) drawn.clear();
    drawn.insert(key, pixmap);
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

void translateParts(const IniFile *ini, const QString &section, const QList<QWidget *> &parts)
{
    if (!ini) return;
    for (QWidget *w : parts) {
        if (!w || w->objectName().isEmpty()) continue;
        const QString name = w->objectName();
        w->setToolTip(wizReadString(ini, section, QLatin1Char('h') + name, w->toolTip()));
        if (auto *label = qobject_cast<QLabel *>(w))
            label->setText(wizReadString(ini, section, QLatin1Char('c') + name, label->text()));
        else if (auto *button = qobject_cast<QAbstractButton *>(w))
            button->setText(wizReadString(ini, section, QLatin1Char('c') + name, button->text()));
    }
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
