#ifndef DRIVEWIZ_WIDGETS_FRMWAITENA_H
#define DRIVEWIZ_WIDGETS_FRMWAITENA_H

#include "drivewiz_global.h"

#include <QDialog>
#include <QPointer>

#include <memory>

class QLabel;
class QPushButton;

namespace Ui {
class TFrmWaitForEnable;
}

namespace drivewiz {

/// The small always-on-top dialog shown while the user must switch the drive's enable
/// off. The caller writes the request into Label1, shows the dialog non-modally with
/// show(), polls the drive's enable state and aborted(), and closes the dialog itself
/// when the enable is off or the user aborted.
///
/// It has no border icons, is centred on the screen when shown and has a fixed client
/// area of 354 x 112. The abort button BitBtn1 (text s_Cancel, "Abbrechen") only sets the
/// aborted flag; it never closes the dialog, so the caller sees the abort on its next
/// poll. Escape and a close request from the window system count as the abort button.
class DRIVEWIZ_EXPORT TFrmWaitForEnable : public QDialog
{
    Q_OBJECT

public:
    explicit TFrmWaitForEnable(QWidget *parent = nullptr);
    ~TFrmWaitForEnable() override;

    /// True once the user pressed the abort button since the dialog was last shown.
    bool aborted() const { return m_aborted; }

    /// Runs when the dialog is shown: clears the aborted flag and centres the dialog.
    void FormShow();
    /// The abort button: sets the aborted flag.
    void BitBtn1Click();

    QLabel *Label1 = nullptr;       ///< the request, word-wrapped, 13-pixel font
    QPushButton *BitBtn1 = nullptr; ///< the abort button

public Q_SLOTS:
    /// Escape: the same as the abort button; the dialog stays open.
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void centreOnScreen();

    std::unique_ptr<Ui::TFrmWaitForEnable> ui;
    bool m_aborted = false;
};

/// The shared instance; null until WaitForEnableDialog() creates it.
extern DRIVEWIZ_EXPORT QPointer<TFrmWaitForEnable> FrmWaitForEnable;

/// The shared instance, created on first use with `parent` as its owner (a parentless
/// one lives until the caller deletes it). A later call returns the same dialog and
/// ignores `parent`.
DRIVEWIZ_EXPORT TFrmWaitForEnable *WaitForEnableDialog(QWidget *parent = nullptr);

} // namespace drivewiz

#endif // DRIVEWIZ_WIDGETS_FRMWAITENA_H
