#include "widgets/FrmWaitENA.h"

#include "lang/wizSprache.h"
#include "ui_FrmWaitENA.h"
#include "widgets/BitMaps.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

namespace drivewiz {

QPointer<TFrmWaitForEnable> FrmWaitForEnable;

TFrmWaitForEnable::TFrmWaitForEnable(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowStaysOnTopHint),
      ui(std::make_unique<Ui::TFrmWaitForEnable>())
{
    ui->setupUi(this);
    Label1 = ui->Label1;
    BitBtn1 = ui->BitBtn1;
    setFixedSize(354, 112);
    QFont font = Label1->font();
    font.setPixelSize(13); // Designer files know only point sizes
    Label1->setFont(font);
    BitBtn1->setText(s_Cancel);
    BitBtn1->setIcon(QIcon(wizBitMap(TBitMap::Cancel, QSize(16, 16))));
    setWindowTitle(s_FreigabeAus);
    connect(BitBtn1, &QPushButton::clicked, this, [this] { BitBtn1Click(); });
}

TFrmWaitForEnable::~TFrmWaitForEnable() = default;

void TFrmWaitForEnable::FormShow()
{
    m_aborted = false;
    centreOnScreen();
}

void TFrmWaitForEnable::BitBtn1Click()
{
    m_aborted = true;
}

void TFrmWaitForEnable::reject()
{
    // QDialog would hide itself without a word; the polling caller must see an abort.
    BitBtn1Click();
}

void TFrmWaitForEnable::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous()) FormShow();
}

void TFrmWaitForEnable::closeEvent(QCloseEvent *event)
{
    // The user closing the window (Alt+F4) asks to abort; the caller's close() goes on.
    // QDialog's own handler is skipped: it would route the caller's close() through
    // reject(), which here keeps the dialog open.
    if (event->spontaneous()) {
        BitBtn1Click();
        event->ignore();
    } else {
        event->accept();
    }
}

void TFrmWaitForEnable::centreOnScreen()
{
    QScreen *screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    QRect frame = frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    move(frame.topLeft());
}

TFrmWaitForEnable *WaitForEnableDialog(QWidget *parent)
{
    if (!FrmWaitForEnable) FrmWaitForEnable = new TFrmWaitForEnable(parent);
    return FrmWaitForEnable;
}

} // namespace drivewiz
