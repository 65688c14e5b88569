#ifndef DRIVEWIZ_PLATFORM_DIALOGS_H
#define DRIVEWIZ_PLATFORM_DIALOGS_H

#include "drivewiz_global.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace drivewiz {

/// Kind of a message dialog; picks the icon and the caption.
enum class MsgDlgType { Warning, Error, Information, Confirmation, Custom };

/// Buttons of a message dialog; combine with `|`.
enum MsgDlgButton : unsigned {
    mbYes = 0x001,
    mbNo = 0x002,
    mbOK = 0x004,
    mbCancel = 0x008,
    mbAbort = 0x010,
    mbRetry = 0x020,
    mbIgnore = 0x040,
    mbAll = 0x080,
    mbNoToAll = 0x100,
    mbYesToAll = 0x200,
    mbHelp = 0x400,
};
using MsgDlgButtons = unsigned;

inline constexpr MsgDlgButtons mbYesNo = mbYes | mbNo;
inline constexpr MsgDlgButtons mbYesNoCancel = mbYes | mbNo | mbCancel;
inline constexpr MsgDlgButtons mbOKCancel = mbOK | mbCancel;

/// Result of a modal dialog, numbered as host programs expect them.
enum ModalResult : int {
    mrNone = 0,
    mrOk = 1,
    mrCancel = 2,
    mrAbort = 3,
    mrRetry = 4,
    mrIgnore = 5,
    mrYes = 6,
    mrNo = 7,
    mrAll = 8,
    mrNoToAll = 9,
    mrYesToAll = 10,
};

/// Every message, question, input box, beep and file dialog of the library goes through
/// one replaceable service. The default shows Qt dialogs; tests install a DialogRecorder.
class DRIVEWIZ_EXPORT DialogService
{
public:
    virtual ~DialogService();

    /// A plain information box with an OK button.
    virtual void showMessage(const QString &text) = 0;
    /// A message box of the given kind; returns the ModalResult of the pressed button.
    virtual int messageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons) = 0;
    /// Asks for a line of text; returns false when the user cancels (value is then kept).
    virtual bool inputQuery(const QString &caption, const QString &prompt, QString &value) = 0;
    /// The system beep.
    virtual void beep() = 0;
    /// File dialogs; an empty result means the user cancelled.
    virtual QString getOpenFileName(const QString &caption, const QString &dir,
                                    const QString &filter) = 0;
    virtual QString getSaveFileName(const QString &caption, const QString &dir,
                                    const QString &filter) = 0;
};

/// The service in use. Never null: the Qt default is created on first use.
DRIVEWIZ_EXPORT DialogService *dialogService();
/// Installs a service (the library takes ownership); null restores the Qt default.
/// Returns the previous service, owned by the caller from then on.
DRIVEWIZ_EXPORT std::unique_ptr<DialogService> setDialogService(std::unique_ptr<DialogService> s);

/// The Qt default: QMessageBox, QInputDialog, QFileDialog and QApplication::beep.
class DRIVEWIZ_EXPORT QtDialogService : public DialogService
{
public:
    void showMessage(const QString &text) override;
    int messageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons) override;
    bool inputQuery(const QString &caption, const QString &prompt, QString &value) override;
    void beep() override;
    QString getOpenFileName(const QString &caption, const QString &dir,
                            const QString &filter) override;
    QString getSaveFileName(const QString &caption, const QString &dir,
                            const QString &filter) override;
};

/// The window title of a message dialog of a kind (Custom: the application's name).
/// German until SetDialogCaption changes it; the language layer sets it from the
/// language file, so titles follow the wizard's language.
DRIVEWIZ_EXPORT QString DialogCaption(MsgDlgType type);
/// Sets the title of a kind; an empty text restores the German default.
DRIVEWIZ_EXPORT void SetDialogCaption(MsgDlgType type, const QString &caption);

// Short forms used throughout the library.
DRIVEWIZ_EXPORT void ShowMessage(const QString &text);
DRIVEWIZ_EXPORT int MessageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons);
/// Returns the entered text, or `defaultValue` when the user cancels.
DRIVEWIZ_EXPORT QString InputBox(const QString &caption, const QString &prompt,
                                 const QString &defaultValue);
DRIVEWIZ_EXPORT bool InputQuery(const QString &caption, const QString &prompt, QString &value);
DRIVEWIZ_EXPORT void Beep();

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_DIALOGS_H
