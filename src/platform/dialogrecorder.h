#ifndef DRIVEWIZ_PLATFORM_DIALOGRECORDER_H
#define DRIVEWIZ_PLATFORM_DIALOGRECORDER_H

#include "platform/dialogs.h"

#include <QVariant>

#include <deque>
#include <vector>

namespace drivewiz {

/// A DialogService for tests and scripted runs: it keeps every text it is shown and
/// answers from a script instead of opening a window.
///
/// Answers are taken in order from the script; when the script is empty a message box
/// answers with its first button in the order OK, Yes, ... (as pressing Enter would), an
/// input box keeps its value and returns true, and a file dialog returns an empty name.
class DRIVEWIZ_EXPORT DialogRecorder : public DialogService
{
public:
    enum class Kind { Message, MessageDlg, Input, Beep, OpenFile, SaveFile };

    struct Entry
    {
        Kind kind;
        QString text;    ///< message text, input prompt, or file dialog caption
        QString caption; ///< input caption or file dialog filter
        MsgDlgType type = MsgDlgType::Information;
        MsgDlgButtons buttons = 0;
        QVariant answer; ///< what the recorder answered
    };

    void showMessage(const QString &text) override;
    int messageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons) override;
    bool inputQuery(const QString &caption, const QString &prompt, QString &value) override;
    void beep() override;
    QString getOpenFileName(const QString &caption, const QString &dir,
                            const QString &filter) override;
    QString getSaveFileName(const QString &caption, const QString &dir,
                            const QString &filter) override;

    /// Queues an answer: an int ModalResult for message boxes, a QString for input and
    /// file dialogs, or an invalid QVariant for "cancel" in an input box.
    void answer(const QVariant &value) { m_script.push_back(value); }

    const std::vector<Entry> &entries() const { return m_entries; }
    /// The texts of all message boxes (ShowMessage and MessageDlg), in order.
    QStringList messages() const;
    int beeps() const;
    /// The texts of the message boxes since the last call, and forgets them.
    QStringList takeMessages();
    void clear();
    bool scriptEmpty() const { return m_script.empty(); }

private:
    bool nextAnswer(QVariant &out);

    std::vector<Entry> m_entries;
    std::deque<QVariant> m_script;
    size_t m_taken = 0;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_DIALOGRECORDER_H
