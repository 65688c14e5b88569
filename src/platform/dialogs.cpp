#include "platform/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace drivewiz {

namespace {

std::unique_ptr<DialogService> &currentService()
{
    static std::unique_ptr<DialogService> service;
    return service;
}

struct ButtonMap
{
    MsgDlgButton ours;
    QMessageBox::StandardButton qt;
    ModalResult result;
};

// Order matters: it is the order the buttons are offered in and the first one present is
// the default button.
constexpr ButtonMap kButtons[] = {
    {mbOK, QMessageBox::Ok, mrOk},
    {mbYes, QMessageBox::Yes, mrYes},
    {mbYesToAll, QMessageBox::YesToAll, mrYesToAll},
    {mbNo, QMessageBox::No, mrNo},
    {mbNoToAll, QMessageBox::NoToAll, mrNoToAll},
    {mbAll, QMessageBox::SaveAll, mrAll},
    {mbRetry, QMessageBox::Retry, mrRetry},
    {mbIgnore, QMessageBox::Ignore, mrIgnore},
    {mbAbort, QMessageBox::Abort, mrAbort},
    {mbCancel, QMessageBox::Cancel, mrCancel},
    {mbHelp, QMessageBox::Help, mrNone},
};

QMessageBox::Icon iconFor(MsgDlgType type)
{
    switch (type) {
    case MsgDlgType::Warning:
        return QMessageBox::Warning;
    case MsgDlgType::Error:
        return QMessageBox::Critical;
    case MsgDlgType::Information:
        return QMessageBox::Information;
    case MsgDlgType::Confirmation:
        return QMessageBox::Question;
    case MsgDlgType::Custom:
        break;
    }
    return QMessageBox::NoIcon;
}

QString germanCaption(MsgDlgType type)
{
    switch (type) {
    case MsgDlgType::Warning:
        return QStringLiteral("Warnung");
    case MsgDlgType::Error:
        return QStringLiteral("Fehler");
    case MsgDlgType::Information:
        return QStringLiteral("Information");
    case MsgDlgType::Confirmation:
        return QStringLiteral("Bestätigen");
    case MsgDlgType::Custom:
        break;
    }
    return QString();
}

QString &captionSlot(MsgDlgType type)
{
    static QString captions[int(MsgDlgType::Custom) + 1];
    return captions[int(type)];
}

// Message texts use '\r' as the line break of the drive tool; Qt wants '\n'.
QString displayText(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

} // namespace

QString DialogCaption(MsgDlgType type)
{
    if (type == MsgDlgType::Custom) return QCoreApplication::applicationName();
    const QString &set = captionSlot(type);
    return set.isEmpty() ? germanCaption(type) : set;
}

void SetDialogCaption(MsgDlgType type, const QString &caption)
{
    if (type != MsgDlgType::Custom) captionSlot(type) = caption;
}

DialogService::~DialogService() = default;

DialogService *dialogService()
{
    auto &service = currentService();
    if (!service) service = std::make_unique<QtDialogService>();
    return service.get();
}

std::unique_ptr<DialogService> setDialogService(std::unique_ptr<DialogService> s)
{
    auto previous = std::move(currentService());
    currentService() = std::move(s);
    return previous;
}

void QtDialogService::showMessage(const QString &text)
{
    QMessageBox box(QMessageBox::NoIcon, QCoreApplication::applicationName(), displayText(text),
                    QMessageBox::Ok, QApplication::activeWindow());
    box.exec();
}

int QtDialogService::messageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons)
{
    QMessageBox box(iconFor(type), DialogCaption(type), displayText(text), QMessageBox::NoButton,
                    QApplication::activeWindow());
    if (buttons == 0) buttons = mbOK;
    for (const auto &b : kButtons) {
        if (buttons & b.ours) box.addButton(b.qt);
    }
    box.exec();
    const auto clicked = box.standardButton(box.clickedButton());
    for (const auto &b : kButtons) {
        if (b.qt == clicked) return b.result;
    }
    return (buttons & mbCancel) ? mrCancel : mrNone;
}

bool QtDialogService::inputQuery(const QString &caption, const QString &prompt, QString &value)
{
    bool ok = false;
    const QString text = QInputDialog::getText(QApplication::activeWindow(), caption,
                                               displayText(prompt), QLineEdit::Normal, value, &ok);
    if (ok) value = text;
    return ok;
}

void QtDialogService::beep()
{
    QApplication::beep();
}

QString QtDialogService::getOpenFileName(const QString &caption, const QString &dir,
                                         const QString &filter)
{
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), caption, dir, filter);
}

QString QtDialogService::getSaveFileName(const QString &caption, const QString &dir,
                                         const QString &filter)
{
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), caption, dir, filter);
}

void ShowMessage(const QString &text)
{
    dialogService()->showMessage(text);
}

int MessageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons)
{
    return dialogService()->messageDlg(text, type, buttons);
}

QString InputBox(const QString &caption, const QString &prompt, const QString &defaultValue)
{
    QString value = defaultValue;
    if (!dialogService()->inputQuery(caption, prompt, value)) return defaultValue;
    return value;
}

bool InputQuery(const QString &caption, const QString &prompt, QString &value)
{
    return dialogService()->inputQuery(caption, prompt, value);
}

void Beep()
{
    dialogService()->beep();
}

} // namespace drivewiz
