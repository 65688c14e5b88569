// The ready-made frame of the drive's fixed-function binary inputs.

#include "ioframes/SystemBEs.h"

#include "ioframes/BE.h"
#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "ui_SystemBEs.h"

#include <QCheckBox>
#include <QLabel>

namespace drivewiz {

namespace {
constexpr int kTop = 28; // below the enable line
constexpr int kGap = 2;
} // namespace

TSystemBEsFrame::TSystemBEsFrame(QWidget *parent)
    : QFrame(parent), m_ui(std::make_unique<Ui::TSystemBEsFrame>())
{
    ioframes::setupForm(this, [this] { m_ui->setupUi(this); });
    BEinput1 = m_ui->BEinput1;
    BEinput2 = m_ui->BEinput2;
    BEinput3 = m_ui->BEinput3;
    BEinput4 = m_ui->BEinput4;
    BEinput5 = m_ui->BEinput5;
    BEinput7 = m_ui->BEinput7;
    ImgArrow = m_ui->ImgArrow;
    LblEingangFrg = m_ui->LblEingangFrg;
    FrameResize();
}

TSystemBEsFrame::~TSystemBEsFrame() = default;

QList<TBEinput *> TSystemBEsFrame::Inputs() const
{
    return {BEinput1, BEinput2, BEinput3, BEinput4, BEinput5, BEinput7};
}

TParaTable *TSystemBEsFrame::wizParaSource() const
{
    return m_table;
}

void TSystemBEsFrame::SetwizParaSource(TParaTable *table)
{
    m_table = table;
    if (table) m_tableName = table->objectName();
    for (TBEinput *input : Inputs())
        input->SetwizParaSource(table);
    FrameResize();
}

QString TSystemBEsFrame::wizParaSourceName() const
{
    return m_table ? m_table->objectName() : m_tableName;
}

void TSystemBEsFrame::SetwizParaSourceName(const QString &objectName)
{
    m_tableName = objectName;
    if (!isLoading()) SetwizParaSource(ioframes::tableByName(this, objectName));
}

void TSystemBEsFrame::SetwizParControlLeft(int left)
{
    m_controlLeft = left;
    FrameResize();
}

void TSystemBEsFrame::SetwizParControlWidth(int width)
{
    m_controlWidth = width;
    FrameResize();
}

void TSystemBEsFrame::SetwizParamWidth(int width)
{
    m_paramWidth = width;
    FrameResize();
}

int TSystemBEsFrame::rowHeight() const
{
    int h = 28;
    for (const TBEinput *input : Inputs())
        h = std::max(h, input->sizeHint().height());
    return h;
}

// One row an input under the enable line; the source fields share the column of the
// widest parameter name (at wizParControlLeft at the least), and the rows take the
// frame's width, so the arrows reach its right edge.
void TSystemBEsFrame::FrameResize()
{
    if (m_laying || isLoading()) return; // once, when loaded
    m_laying = true;
    int left = m_controlLeft;
    for (const TBEinput *input : Inputs()) {
        if (!input->isHidden()) left = std::max(left, input->NeededControlLeft());
    }
    const int h = rowHeight();
    int y = kTop;
    for (TBEinput *input : Inputs()) {
        input->SetwizControlLeft(left);
        input->SetwizControlWidth(m_controlWidth);
        input->SetwizParamWidth(m_paramWidth);
        input->setGeometry(0, y, width(), h);
        if (!input->isHidden()) y += h + kGap;
    }
    LblEingangFrg->adjustSize();
    LblEingangFrg->move(4, (kTop - LblEingangFrg->height()) / 2);
    const int arrowLeft = std::max(LblEingangFrg->geometry().right() + 8, 355);
    ImgArrow->setGeometry(arrowLeft, (kTop - 12) / 2, std::max(0, width() - arrowLeft - 2), 12);
    ioframes::showArrow(ImgArrow);
    m_laying = false;
    updateGeometry();
}

QSize TSystemBEsFrame::sizeHint() const
{
    int w = LblEingangFrg->sizeHint().width() + 48;
    int rows = 0;
    for (const TBEinput *input : Inputs()) {
        w = std::max(w, input->sizeHint().width());
        if (!input->isHidden()) ++rows;
    }
    return QSize(w, kTop + rows * (rowHeight() + kGap));
}

QSize TSystemBEsFrame::minimumSizeHint() const
{
    int w = 0;
    for (const TBEinput *input : Inputs())
        w = std::max(w, input->minimumSizeHint().width());
    return QSize(w, sizeHint().height());
}

void TSystemBEsFrame::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    FrameResize();
}

bool TSystemBEsFrame::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) FrameResize();
    return QFrame::event(event);
}

void TSystemBEsFrame::UpdateLanguage()
{
    if (m_table)
        ioframes::translateParts(m_table->LanguageFile(), QStringLiteral("TSystemBEsFrame"),
                                 {LblEingangFrg, ImgArrow});
    FrameResize();
}

void TSystemBEsFrame::Loaded()
{
    Component::Loaded();
    if (!m_table && !m_tableName.isEmpty())
        SetwizParaSource(ioframes::tableByName(this, m_tableName));
    FrameResize();
    if (isDesigning()) return;
    UpdateLanguage();
}

} // namespace drivewiz
