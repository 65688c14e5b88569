#include "platform/dialogrecorder.h"

namespace drivewiz {

namespace {

// What pressing Enter would choose: the first button in the dialog's own order.
int defaultAnswer(MsgDlgButtons buttons)
{
    static constexpr std::pair<MsgDlgButton, ModalResult> order[] = {
        {mbOK, mrOk},         {mbYes, mrYes},         {mbYesToAll, mrYesToAll},
        {mbNo, mrNo},         {mbNoToAll, mrNoToAll}, {mbAll, mrAll},
        {mbRetry, mrRetry},   {mbIgnore, mrIgnore},   {mbAbort, mrAbort},
        {mbCancel, mrCancel},
    };
    for (const auto &[button, result] : order) {
        if (buttons & button) return result;
    }
    return mrOk;
}

} // namespace

bool DialogRecorder::nextAnswer(QVariant &out)
{
    if (m_script.empty()) return false;
    out = m_script.front();
    m_script.pop_front();
    return true;
}

void DialogRecorder::showMessage(const QString &text)
{
    QVariant ignored;
    nextAnswer(ignored);
    m_entries.push_back({Kind::Message, text, {}, MsgDlgType::Information, mbOK, int(mrOk)});
}

int DialogRecorder::messageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons)
{
    QVariant scripted;
    const int result = nextAnswer(scripted) && scripted.canConvert<int>() ? scripted.toInt()
                                                                          : defaultAnswer(buttons);
    m_entries.push_back({Kind::MessageDlg, text, {}, type, buttons, result});
    return result;
}

bool DialogRecorder::inputQuery(const QString &caption, const QString &prompt, QString &value)
{
    QVariant scripted;
    bool ok = true;
    if (nextAnswer(scripted)) {
        ok = scripted.isValid();
        if (ok) value = scripted.toString();
    }
    m_entries.push_back(
        {Kind::Input, prompt, caption, MsgDlgType::Custom, 0, ok ? QVariant(value) : QVariant()});
    return ok;
}

void DialogRecorder::beep()
{
    m_entries.push_back({Kind::Beep, {}, {}, MsgDlgType::Custom, 0, {}});
}

QString DialogRecorder::getOpenFileName(const QString &caption, const QString &dir,
                                        const QString &filter)
{
    QVariant scripted;
    const QString name = nextAnswer(scripted) ? scripted.toString() : QString();
    m_entries.push_back({Kind::OpenFile, caption, filter, MsgDlgType::Custom, 0, name});
    return name;
}

QString DialogRecorder::getSaveFileName(const QString &caption, const QString &dir,
                                        const QString &filter)
{
    QVariant scripted;
    const QString name = nextAnswer(scripted) ? scripted.toString() : QString();
    m_entries.push_back({Kind::SaveFile, caption, filter, MsgDlgType::Custom, 0, name});
    return name;
}

QStringList DialogRecorder::messages() const
{
    QStringList out;
    for (const auto &e : m_entries) {
        if (e.kind == Kind::Message || e.kind == Kind::MessageDlg) out << e.text;
    }
    return out;
}

int DialogRecorder::beeps() const
{
    int n = 0;
    for (const auto &e : m_entries)
        n += e.kind == Kind::Beep;
    return n;
}

QStringList DialogRecorder::takeMessages()
{
    QStringList out;
    for (; m_taken < m_entries.size(); ++m_taken) {
        const auto &e = m_entries[m_taken];
        if (e.kind == Kind::Message || e.kind == Kind::MessageDlg) out << e.text;
    }
    return out;
}

void DialogRecorder::clear()
{
    m_entries.clear();
    m_script.clear();
    m_taken = 0;
}

} // namespace drivewiz
